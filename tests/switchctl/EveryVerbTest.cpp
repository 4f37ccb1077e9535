// What all verbs say of the same boards: no verb claims more than it knows, and they agree with one another.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/TemporaryFile.hpp"

using nlohmann::json;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned mdioSwitches = 32;

/// Switches of all ids: an 88E6096 has a place for 32 on the MDIO bus, and beside
/// them there is one VSC7390. All ports of all, and 30 VLANs.
std::string largestBoard() {
    std::ostringstream text;
    auto const writePorts = [&](unsigned count) {
        for (unsigned port = 0; port < count; ++port) {
            text << "<port id='" << port << "' connectedTo='"
                 << (count == 24 && port == 0 ? "cpu" : "switchInterlink") << "' portStatus='forwarding'/>\n";
        }
        text << "</switch>\n";
    };
    text << "<board><switches>\n<switch id='32' switchModel='vsc7390'>\n";
    writePorts(24);
    for (unsigned id = 0; id < mdioSwitches; ++id) {
        text << "<switch id='" << id << "' switchModel='88e6096' atuAgeTime='300'>\n";
        writePorts(11);
    }
    text << "</switches>\n";
    for (unsigned vlan = 1; vlan <= 30; ++vlan) {
        text << "<vlan id='" << vlan << "' typeOfVlan='tagBasedVlan'>\n";
        // Members are told apart by port number alone.
        for (unsigned port = 0; port < 11; ++port) {
            text << "<port switchId='" << (vlan * 11 + port) % mdioSwitches << "' portId='" << port
                 << "' ingress='addTagIfUntagged' egress='stripTag'/>\n";
        }
        text << "</vlan>\n";
    }
    text << "</board>\n";
    return text.str();
}

struct Board {
    char const* name;
    /// A register and what is not in it.
    char const* deviation;
    /// By hand.
    int checkStatus;
    int bringUpStatus;
};

void PrintTo(Board const& board, std::ostream* out) {
    for (char const* letter = board.name; *letter != '\0'; ++letter) {
        *out << (*letter == '-' ? '_' : *letter);
    }
}

class EveryVerbTest : public testing::TestWithParam<Board> {
protected:
    EveryVerbTest() {
        std::string const name = GetParam().name;
        if (name == "largest") {
            _largest = std::make_unique<TemporaryFile>(largestBoard());
            path = _largest->path();
            return;
        }
        path = EXAMPLES_FOLDER "/" + name + ".xml";
        if (!std::ifstream(path)) {
            path = BOARDS_FOLDER "/" + name + ".xml";
        }
    }

    ChildProcess run(std::vector<std::string> words, std::vector<std::string> const& options = {}) const {
        words.push_back(path);
        words.insert(words.end(), options.begin(), options.end());
        return ChildProcess::runSwitchctl(words);
    }

    /// What the verb prints as JSON; it must end as it does with text.
    json asJson(std::vector<std::string> const& words, std::vector<std::string> options, int status) const {
        options.emplace_back("--json");
        ChildProcess const child = run(words, options);
        EXPECT_EQ(child.status, status) << child.errors;
        return json::parse(child.out);
    }

    std::string path;

private:
    std::unique_ptr<TemporaryFile> _largest;
};

std::string number(json const& value) {
    return std::to_string(value.get<std::size_t>());
}

std::size_t occurrences(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// Lines of a trace that begin with a time.
std::size_t accessesIn(std::string const& trace) {
    std::istringstream stream(trace);
    std::size_t count = 0;
    for (std::string line; std::getline(stream, line);) {
        count += !line.empty() && line[0] >= '0' && line[0] <= '9' ? 1U : 0U;
    }
    return count;
}

std::string counted(json const& value, std::string const& what) {
    return number(value) + " " + what + (value == 1 ? "" : "s");
}

std::string countsOf(json const& checks) {
    return counted(checks["errors"], "error") + ", " + counted(checks["warnings"], "warning") + ", " +
           counted(checks["notes"], "note");
}

std::size_t withSeverity(json const& messages, std::string const& severity) {
    return static_cast<std::size_t>(std::count_if(messages.begin(), messages.end(), [&](json const& message) {
        return message["severity"] == severity;
    }));
}

std::size_t withoutMembers(json const& list) {
    return static_cast<std::size_t>(
        std::count_if(list.begin(), list.end(), [](json const& entry) { return entry["members"].empty(); }));
}

} // namespace

TEST_P(EveryVerbTest, CheckCountsWhatItLists) {
    ChildProcess const text = run({"check"});
    EXPECT_EQ(text.status, GetParam().checkStatus);
    json const checks = asJson({"check"}, {}, text.status);
    EXPECT_EQ(checks["errors"], withSeverity(checks["findings"], "error"));
    EXPECT_EQ(checks["warnings"], withSeverity(checks["findings"], "warning"));
    EXPECT_EQ(checks["notes"], withSeverity(checks["findings"], "note"));
    EXPECT_THAT(text.out, EndsWith(path + ": " + countsOf(checks) + "\n"));
    EXPECT_EQ(text.status, checks["errors"] > 0 ? 3 : checks["warnings"] > 0 ? 10 : 0);
}

TEST_P(EveryVerbTest, BringUpEndsWellOnlyWhenAllIsWell) {
    ChildProcess const text = run({"bring-up"}, {"--simulate"});
    EXPECT_EQ(text.status, GetParam().bringUpStatus) << text.errors;
    json const up = asJson({"bring-up"}, {"--simulate"}, text.status);
    json const checks = asJson({"check"}, {}, GetParam().checkStatus);
    EXPECT_THAT(text.out, StartsWith("check: " + countsOf(up["checks"])));
    EXPECT_EQ(countsOf(up["checks"]), countsOf(checks));
    std::size_t const errors =
        withSeverity(up["complaints"], "error") + withSeverity(up["complaints"], "critical");
    EXPECT_EQ(text.status == 0, up["populated"] == true && up["checks"]["errors"] == 0 && errors == 0 &&
                                    up["readBack"]["deviations"].empty() && up["readBack"]["unread"].empty());
    EXPECT_EQ(text.errors.empty(), text.status == 0) << text.errors;
    EXPECT_EQ(up["complaints"].empty(), occurrences(text.out, "\nwarnings and errors: none\n") == 1);
    auto const& found = up["readBack"];
    EXPECT_THAT(text.out,
                EndsWith("\nread back: " + number(found["switches"]) + " switch" +
                         (found["switches"] == 1 ? "" : "es") + ", " + number(found["registers"]) +
                         " registers, " + number(found["entries"]) + " table entries, 0 deviations\n"));
    EXPECT_EQ(found["switches"], up["switches"].size());
    EXPECT_EQ(occurrences(text.out, ": no members"),
              withoutMembers(up["vlans"]) + withoutMembers(up["groups"]) + withoutMembers(up["trunks"]));
    EXPECT_THAT(text.out, Not(HasSubstr(".4294967295"))) << "no number stands for none";
}

TEST_P(EveryVerbTest, AnAuditComparesWhatBringUpReadsBack) {
    ChildProcess const text = run({"audit"}, {"--simulate"});
    EXPECT_EQ(text.status, 0);
    json const audit = asJson({"audit"}, {"--simulate"}, 0);
    json const up = asJson({"bring-up"}, {"--simulate"}, GetParam().bringUpStatus);
    EXPECT_EQ(audit["switches"], up["switches"].size());
    EXPECT_EQ(audit["switchesRead"], up["readBack"]["switches"]);
    EXPECT_EQ(audit["registers"], up["readBack"]["registers"]);
    EXPECT_EQ(audit["entries"], up["readBack"]["entries"]);
    EXPECT_EQ(audit["deviations"], json::array());
    EXPECT_THAT(text.out,
                HasSubstr(", " + number(audit["registers"]) + " registers, " + number(audit["entries"]) +
                          " table entries, 0 deviations\nnot compared: "));
    for (json const& group : audit["notCompared"]) {
        EXPECT_THAT(text.out,
                    HasSubstr(group["what"].get<std::string>() + ": " + number(group["count"]) + " ("));
    }
}

TEST_P(EveryVerbTest, AnAuditSeesTheOneRegisterThatDeviates) {
    ChildProcess const text = run({"audit"}, {"--simulate", "--deviate", GetParam().deviation});
    EXPECT_EQ(text.status, 1) << text.errors;
    EXPECT_THAT(text.out, HasSubstr(" table entries, 1 deviation\n"));
    EXPECT_EQ(asJson({"audit"}, {"--simulate", "--deviate", GetParam().deviation}, 1)["deviations"].size(),
              1U);
}

TEST_P(EveryVerbTest, APlanTakesWhatBringUpTakes) {
    json const plan = asJson({"plan"}, {}, 0);
    json const effort = asJson({"bring-up"}, {"--simulate"}, GetParam().bringUpStatus)["effort"];
    json const& predicted = plan["predicted"];
    EXPECT_EQ(predicted["writes"].get<int>() + predicted["reads"].get<int>(), effort["registerAccesses"]);
    EXPECT_EQ(predicted["busAccesses"], effort["busAccesses"]);
    EXPECT_EQ(predicted["elapsedNanoseconds"], effort["elapsedNanoseconds"]);
    EXPECT_THAT(run({"plan"}).out,
                ContainsRegex("\npredicted: " + number(predicted["writes"]) + " register writes and " +
                              number(predicted["reads"]) + " reads, " + number(predicted["busAccesses"]) +
                              " bus accesses, "));
}

TEST_P(EveryVerbTest, PathsCountWhatTheyListAndChipsHaveThem) {
    ChildProcess const text = run({"paths"});
    json const paths = asJson({"paths"}, {}, text.status);
    EXPECT_EQ(paths["errors"], withSeverity(paths["differences"], "error") + paths["contradictions"].size());
    EXPECT_EQ(paths["warnings"], withSeverity(paths["differences"], "warning"));
    EXPECT_EQ(paths["notes"], withSeverity(paths["differences"], "note"));
    EXPECT_EQ(text.status, paths["errors"] > 0 ? 3 : paths["warnings"] > 0 ? 10 : 0);
    EXPECT_THAT(text.out, EndsWith(path + ": " + countsOf(paths) + "; " +
                                   counted(paths["framesAsked"], "frame") + " asked\n"));
    json const live = asJson({"paths"}, {"--live", "--simulate"}, text.status);
    // What VIDs are asked depends on what chips know, too; on these boards that is what the document says.
    EXPECT_EQ(live["framesAsked"], paths["framesAsked"]);
    EXPECT_EQ(live["differences"], paths["differences"]);
}

TEST_P(EveryVerbTest, PicturesHaveTheSwitchesAndVlansThatComeUp) {
    json const picture = asJson({"draw"}, {}, 0);
    json const up = asJson({"bring-up"}, {"--simulate"}, GetParam().bringUpStatus);
    EXPECT_EQ(picture["switches"].size(), up["switches"].size());
    EXPECT_EQ(picture["vlans"].size(), up["vlans"].size());
    std::string const dot = run({"draw"}, {"--format", "dot"}).out;
    for (json const& entry : up["switches"]) {
        std::string const label =
            entry.contains("label") ? " &quot;" + entry["label"].get<std::string>() + "&quot;" : "";
        EXPECT_EQ(occurrences(dot, "<B>switch " + number(entry["switch"]) + label + "  "), 1U);
    }
}

TEST_P(EveryVerbTest, StatisticsAreOfAllPortsOrSayOfWhichNot) {
    ChildProcess const text = run({"statistics"}, {"--simulate"});
    json const statistics = asJson({"statistics"}, {"--simulate"}, text.status);
    EXPECT_EQ(text.status == 0, statistics["unread"].empty());
    EXPECT_EQ(text.errors.empty(), text.status == 0);
    EXPECT_EQ(occurrences(text.out, "statistics of port "), statistics["ports"].size());
    for (json const& port : statistics["ports"]) {
        EXPECT_FALSE(port["counters"].empty() && text.status == 0) << port;
    }
}

TEST_P(EveryVerbTest, ATraceIsReplayedToItsEnd) {
    TemporaryFile const trace;
    EXPECT_EQ(run({"bring-up"}, {"--simulate", "--no-verify", "--trace", trace.path()}).status,
              GetParam().bringUpStatus);
    ChildProcess const replayed = ChildProcess::runSwitchctl({"replay", trace.path(), "--json"});
    EXPECT_EQ(replayed.status, 0) << replayed.errors;
    json const result = json::parse(replayed.out);
    EXPECT_EQ(result["divergence"], nullptr);
    EXPECT_EQ(result["accesses"], accessesIn(trace.content()));
    EXPECT_GT(result["accesses"], 0);
}

#ifndef SLOW_BUILD
// Its accesses to the bus are soon all the same as some to other chips before.
TEST(LargestBoardTest, AStartUpThatRepeatsItselfMakesProgress) {
    TemporaryFile const board(largestBoard());
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", board.path(), "--simulate", "--timeout", "1", "--no-verify"});
    EXPECT_EQ(child.status, 0) << child.errors;
}
#endif

std::vector<Board> boards() {
    std::vector<Board> some{{"home-gateway", "0/port1/DefaultVLAN:DefaultVID=77", 0, 0},
                            {"video-rooms", "2/analyser/VLANMASK=5", 0, 0},
                            {"trap-minimal", "0/port1/DefaultVLAN:DefaultVID=77", 3, 12},
                            {"trap-video-switch", "2/analyser/VLANMASK=5", 3, 12},
                            {"careless", "0/port1/DefaultVLAN:DefaultVID=77", 3, 12},
                            {"warm-restart", "0/port1/DefaultVLAN:DefaultVID=77", 3, 12}};
#ifndef SLOW_BUILD
    some.insert(some.end(), {{"largest", "2/port1/DefaultVLAN:DefaultVID=77", 10, 0},
                             {"trap-access-point", "0/port1/DefaultVLAN:DefaultVID=77", 10, 0},
                             {"trap-three-switches", "0/port1/DefaultVLAN:DefaultVID=77", 10, 0},
                             {"trap-mixed", "0/port1/DefaultVLAN:DefaultVID=77", 3, 12}});
#endif
    return some;
}

INSTANTIATE_TEST_SUITE_P(Boards, EveryVerbTest, testing::ValuesIn(boards()),
                         [](auto const& board) { return testing::PrintToString(board.param); });
