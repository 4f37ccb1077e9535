// `switchctl paths` as it is typed.

#include "switchctl/paths/PathsCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::paths::PathsCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

std::string exampleOf(std::string const& name) {
    return std::string(EXAMPLES_FOLDER) + "/" + name + ".xml";
}

CommandRun run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "paths");
    return CommandRun::of<PathsCommand>(arguments, std::string("/nonexistent/mem"));
}

json jsonOf(std::string const& path) {
    return json::parse(run({path, "--json"}).out);
}

std::string boardWith(std::string const& changedPort, std::string const& more) {
    std::string text = "<board><switches><switch id='0' switchModel='88e6096'>\n";
    for (int port = 0; port < 11; ++port) {
        std::string const element =
            "<port id='" + std::to_string(port) + "' connectedTo='external' portStatus='forwarding'/>\n";
        text += changedPort.find("id='" + std::to_string(port) + "'") == std::string::npos ? element
                                                                                           : changedPort;
    }
    return text +
           "</switch></switches>\n<vlan id='a0' typeOfVlan='tagBasedVlan'/>\n"
           "<vlan id='10' typeOfVlan='tagBasedVlan'>\n"
           "<port switchId='0' portId='0' ingress='addTagIfUntagged' egress='stripTag'/>\n"
           "<port switchId='0' portId='1' ingress='addTagIfUntagged' egress='stripTag'/>\n"
           "<port switchId='0' portId='8' ingress='validateTag' egress='validateTag'/>\n"
           "</vlan>" +
           more + "</board>";
}

/// How often each kind of difference is in what is printed.
std::map<std::string, int> kindsIn(json const& paths) {
    std::map<std::string, int> kinds;
    for (json const& difference : paths["differences"]) {
        ++kinds[difference["kind"].get<std::string>()];
    }
    return kinds;
}

} // namespace

TEST(PathsCommandTest, ABoardThatDoesWhatItsDocumentSays) {
    TemporaryFile const board(boardWith("", ""));
    CommandRun const paths = run({board.path()});
    EXPECT_EQ(paths.status, ExitStatus::success);
    EXPECT_EQ(paths.errors, "");
    EXPECT_EQ(paths.out, "in no VLAN of the document\n"
                         "  nobody reaches anybody\n"
                         "VLAN 16 (0x10, written \"10\")\n"
                         "  0.0 0.1 (untagged, tagged 0)\n"
                         "      reach 0.0 0.1 untagged; 0.8 tagged 16\n"
                         "  0.0 0.1 0.8 (tagged 16)\n"
                         "      reach 0.0 0.1 untagged; 0.8 tagged 16\n"
                         "VLAN 160 (0xa0, written \"a0\")\n"
                         "  nobody reaches anybody\n" +
                             board.path() + ": 0 errors, 0 warnings, 0 notes; 132 frames asked\n");
}

TEST(PathsCommandTest, AStateThatDoesNotHoldIsAWarning) {
    TemporaryFile const board(boardWith("<port id='8' connectedTo='external' portStatus='learning'/>\n", ""));
    CommandRun const paths = run({board.path()});
    EXPECT_EQ(paths.status, ExitStatus::documentWarnings);
    EXPECT_THAT(paths.out,
                HasSubstr(board.path() + ":10: warning: 0.8 (tagged 16) [leak]\n"
                                         "    reach 0.0 0.1 untagged\n"
                                         "    They must not: the sender's portStatus is not \"forwarding\".\n"
                                         "    By M1 to M14.\n"));
    EXPECT_THAT(paths.out, HasSubstr("\n  M12 (likely): VLANTable, "));
}

TEST(PathsCommandTest, AnUnlistedPortIsAnError) {
    TemporaryFile const board(boardWith(" <!-- id='8' -->", ""));
    CommandRun const paths = run({board.path()});
    EXPECT_EQ(paths.status, ExitStatus::badDocument);
    EXPECT_THAT(paths.out, HasSubstr(":1: error: 0.8 (untagged) [leak]\n    reach 0.0 0.1 0.2 0.3 "));
    EXPECT_THAT(paths.out, HasSubstr("the document does not list the sender.\n"));
}

TEST(PathsCommandTest, AContradictionIsAnError) {
    TemporaryFile const board(
        boardWith("", "<vlan id='6' typeOfVlan='tagBasedVlan'>\n"
                      "<port switchId='0' portId='0' ingress='addTagIfUntagged' egress='stripTag'/></vlan>"));
    CommandRun const paths = run({board.path()});
    EXPECT_EQ(paths.status, ExitStatus::badDocument);
    EXPECT_THAT(paths.out,
                ContainsRegex(":[0-9]+: error: \\[contradiction\\]\n    0.0 is addTagIfUntagged in VLAN 6 "));
    EXPECT_EQ(jsonOf(board.path())["contradictions"].size(), 1U);
}

TEST(PathsCommandTest, OnlyBetweenTwoPorts) {
    CommandRun const paths = run({exampleOf("trap-minimal"), "--between", "0.0", "0.1"});
    EXPECT_EQ(paths.status, ExitStatus::success);
    EXPECT_THAT(paths.out, HasSubstr("  0.1 (untagged, tagged 0)\n      reach 0.0 tagged 5\n"));
    EXPECT_THAT(paths.out, Not(HasSubstr("0.2")));
    EXPECT_EQ(run({"--between", "0.0", "0.2", exampleOf("trap-minimal")}).status, ExitStatus::badDocument);
}

TEST(PathsCommandTest, PortsThatAreNoneAreRefused) {
    EXPECT_EQ(run({exampleOf("trap-minimal"), "--between", "0.0"}).status, ExitStatus::usage);
    CommandRun const malformed = run({exampleOf("trap-minimal"), "--between", "0.0", "x"});
    EXPECT_EQ(malformed.status, ExitStatus::usage);
    EXPECT_THAT(malformed.errors, HasSubstr("\"x\" is not of the form SWITCH.PORT"));
    CommandRun const beyond = run({exampleOf("trap-minimal"), "--between", "0.0", "0.11"});
    EXPECT_EQ(beyond.status, ExitStatus::usage);
    EXPECT_EQ(beyond.errors, "switchctl: the board has no port 0.11\n");
}

TEST(PathsCommandTest, DocumentsThatDoNotComeUp) {
    EXPECT_EQ(run({"/nonexistent.xml"}).status, ExitStatus::badDocument);
    TemporaryFile const empty("<board/>");
    EXPECT_EQ(run({empty.path()}).status, ExitStatus::startUpFailed);
}

// Examples to begin with do what they say, and all of it: their VLANs are those of their head comments.
TEST(PathsCommandTest, ExamplesToBeginWithHaveNoDifferences) {
    for (char const* const name : {"home-gateway", "video-rooms"}) {
        CommandRun const paths = run({exampleOf(name)});
        EXPECT_EQ(paths.status, ExitStatus::success) << paths.out;
        EXPECT_THAT(paths.out, HasSubstr("in no VLAN of the document\n  nobody reaches anybody\n"));
        EXPECT_THAT(paths.out, HasSubstr(": 0 errors, 0 warnings, 0 notes; "));
        EXPECT_THAT(kindsIn(jsonOf(exampleOf(name))), IsEmpty());
    }
    std::string const gateway = run({exampleOf("home-gateway")}).out;
    EXPECT_THAT(gateway,
                HasSubstr("reach 0.1 \"house 1\" 0.2 \"house 2\" 0.3 \"house 3\" 0.4 \"house 4\" untagged; "
                          "0.0 \"processor\" tagged 2\n"));
    EXPECT_THAT(
        gateway,
        HasSubstr(
            "  0.5 \"guests\" (untagged, tagged 0-2 4 5 4094)\n      reach 0.0 \"processor\" tagged 3\n"));
    EXPECT_THAT(gateway,
                HasSubstr("  0.6 \"TV 1\" 0.7 \"TV 2\" 0.8 \"uplink\" (tagged 4)\n"
                          "      reach 0.6 \"TV 1\" 0.7 \"TV 2\" untagged; 0.8 \"uplink\" tagged 4\n"));
    EXPECT_THAT(gateway, HasSubstr("  0.0 \"processor\" 0.8 \"uplink\" (tagged 5)\n"
                                   "      reach 0.0 \"processor\" 0.8 \"uplink\" tagged 5\n"));
    std::string const rooms = run({exampleOf("video-rooms")}).out;
    EXPECT_THAT(rooms, HasSubstr("group 239.20.0.1)\n      reach 2.3 2.4 2.5 untagged\n"));
    EXPECT_THAT(rooms, HasSubstr("group 239.20.0.2)\n      reach 2.3 2.6 untagged\n"));
    EXPECT_THAT(rooms,
                HasSubstr("unicast and broadcast)\n      reach 2.1 2.3 2.4 2.5 2.6 2.7 2.8 2.9 2.10 2.11 "
                          "2.12 2.13 2.14 untagged\n"));
    EXPECT_THAT(rooms, HasSubstr("\n      reach 2.2 2.15 2.16 2.17 2.18 2.19 untagged\n"));
}

// What examples are known to do, by kinds: their traps are their own.
TEST(PathsCommandTest, KindsOfDifferencesOfTheExamples) {
    using Kinds = std::map<std::string, int>;
    EXPECT_EQ(kindsIn(jsonOf(exampleOf("trap-minimal"))), (Kinds{{"leak", 10}}));
    EXPECT_EQ(kindsIn(jsonOf(exampleOf("trap-access-point"))), (Kinds{{"leak", 6}}));
    EXPECT_EQ(kindsIn(jsonOf(exampleOf("trap-three-switches"))), (Kinds{{"ambiguous", 1}, {"missing", 1}}));
    EXPECT_EQ(kindsIn(jsonOf(exampleOf("trap-video-switch"))), (Kinds{{"ambiguous", 2}, {"missing", 2}}));
    EXPECT_EQ(kindsIn(jsonOf(exampleOf("trap-mixed"))), (Kinds{{"leak", 2}, {"missing", 6}}));
}

TEST(PathsCommandTest, JsonHasAllOfALine) {
    json const missing = jsonOf(exampleOf("trap-three-switches"))["differences"][0];
    EXPECT_EQ(missing["kind"], "missing");
    EXPECT_EQ(missing["severity"], "warning");
    EXPECT_EQ(missing["line"], 20);
    EXPECT_EQ(missing["from"], json({"0.1"}));
    EXPECT_EQ(missing["frames"], json::array({nullptr}));
    EXPECT_EQ(missing["destinations"], json({"unicast", "broadcast"}));
    EXPECT_EQ(missing["to"], json::array({{{"ports", {"0.0"}}, {"form", "untagged"}}}));
    EXPECT_EQ(missing["rules"], "M1 M2 M3 M4 M5 M6 M7");
    EXPECT_EQ(missing["unsure"][0]["rule"], "M1");
    EXPECT_EQ(missing["unsure"][0]["mark"], "assumed");
}

TEST(PathsCommandTest, OverCables) {
    CommandRun const paths = run({exampleOf("trap-mixed"), "--cable", "0.10=3.20", "--cable", "1.10=3.22"});
    EXPECT_THAT(paths.out, HasSubstr("\nover the cables 0.10=3.20 1.10=3.22\n  nobody reaches anybody\n"));
    EXPECT_THAT(paths.out,
                HasSubstr(": warning: cable 1.10=3.22: 1.10 is in VLAN 6 (0x6, written \"6\"), 3.22 is not "
                          "[mismatch]\n"));
    EXPECT_THAT(paths.out, HasSubstr(": warning: 3.0 (tagged 5) [missing]\n    do not reach over cables, but "
                                     "must, 0.1 0.2 untagged\n"));
}

TEST(PathsCommandTest, OverTheCablesOfTheDocument) {
    CommandRun const ring = run({exampleOf("trap-three-switches")});
    EXPECT_THAT(ring.out, HasSubstr("\nover the cables 0.8=1.9 0.10=2.9 1.10=2.8\n"));
    EXPECT_THAT(ring.out, HasSubstr("  0.0 \"processor\" (tagged 2)\n"
                                    "      reach 1.1 \"table 1\" 1.2 \"table 2\" untagged\n"));
    EXPECT_EQ(run({exampleOf("trap-three-switches"), "--cable", "1.9=0.8"}).out, ring.out);
    json const document = jsonOf(exampleOf("trap-three-switches"));
    EXPECT_EQ(document["cables"], json({"0.8=1.9", "0.10=2.9", "1.10=2.8"}));
    EXPECT_EQ(document["labels"]["1.1"], "table 1");
    EXPECT_EQ(document["labels"]["1"], "meeting room");
}

TEST(PathsCommandTest, ACableThatContradictsTheDocumentIsRefused) {
    CommandRun const other = run({exampleOf("trap-three-switches"), "--cable", "0.8=2.4"});
    EXPECT_EQ(other.status, ExitStatus::usage);
    EXPECT_EQ(other.errors, "switchctl: cable \"0.8=2.4\": 0.8 has a cable already, to 1.9\n");
    TemporaryFile const nowhere("<board><switches><switch id='0' switchModel='88e6096'>\n"
                                "<port id='1' connectedTo='switchInterlink' portStatus='forwarding' "
                                "connectsTo='4.1'/></switch></switches></board>");
    CommandRun const refused = run({nowhere.path()});
    EXPECT_EQ(refused.status, ExitStatus::badDocument);
    EXPECT_EQ(refused.errors,
              "switchctl: " + nowhere.path() + ":2: the connectsTo of 0.1: the board has no port 4.1\n");
}

TEST(PathsCommandTest, ACableThatMakesALoopIsAnError) {
    CommandRun const paths =
        run({exampleOf("trap-minimal"), "--cable", "0.8=0.9", "--between", "0.0", "0.1"});
    EXPECT_EQ(paths.status, ExitStatus::badDocument);
    EXPECT_THAT(paths.out,
                HasSubstr(": error: 0.0 0.1 (tagged 5) [loop]\n    go round for ever, in at 0.9\n"));
    EXPECT_EQ(run({exampleOf("trap-minimal"), "--cable", "0.8"}).status, ExitStatus::usage);
}

TEST(PathsCommandTest, ChipsThatAreAsTheDocumentSaysDoAsTheModels) {
    for (char const* const example : {"trap-minimal", "trap-mixed"}) {
        CommandRun const live = run({exampleOf(example), "--live", "--simulate"});
        CommandRun const models = run({exampleOf(example)});
        EXPECT_EQ(live.out, models.out);
        EXPECT_EQ(live.status, models.status);
    }
    EXPECT_TRUE(
        json::parse(run({exampleOf("trap-minimal"), "--live", "--simulate", "--json"}).out).contains("time"));
    EXPECT_FALSE(jsonOf(exampleOf("trap-minimal")).contains("time"));
}

// The chips were brought up by the board of a later day.
TEST(PathsCommandTest, ChipsOfAnotherDocumentLeak) {
    TemporaryFile const board(boardWith("", ""));
    TemporaryFile const other(
        boardWith("", "<vlan id='77' typeOfVlan='tagBasedVlan'>"
                      "<port switchId='0' portId='3' ingress='validateTag' egress='validateTag'/>"
                      "<port switchId='0' portId='4' ingress='validateTag' egress='validateTag'/></vlan>"));
    EXPECT_EQ(run({board.path(), "--live", "--simulate"}).status, ExitStatus::success);
    CommandRun const live = run({board.path(), "--live", "--simulate=" + other.path()});
    EXPECT_EQ(live.status, ExitStatus::badDocument);
    EXPECT_THAT(live.out, HasSubstr(": error: 0.3 0.4 (tagged 119) [leak]\n    reach 0.3 0.4 as it came\n"
                                    "    They must not: the frame belongs to no VLAN.\n"));
}

TEST(PathsCommandTest, WithoutABoardNothingIsLive) {
    EXPECT_EQ(run({exampleOf("trap-minimal"), "--live"}).status, ExitStatus::noHardware);
    EXPECT_EQ(run({exampleOf("trap-minimal"), "--simulate"}).status, ExitStatus::usage);
    // Of four switches that are to be read, the board has one.
    EXPECT_NE(run({exampleOf("trap-mixed"), "--live", "--simulate=" + exampleOf("trap-minimal")}).status,
              ExitStatus::success);
}
