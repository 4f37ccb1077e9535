// `switchctl table` as it is typed.

#include "switchctl/table/TableCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "reference_host/XmlDocument.hpp"
#include "switchctl/table/TableText.hpp"
#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::table::TableCommand;
using test_support::CommandRun;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

using Words = std::vector<std::string>;

std::string const mixed = EXAMPLES_FOLDER "/trap-mixed.xml";

CommandRun run(Words arguments) {
    arguments.insert(arguments.begin(), "table");
    return CommandRun::of<TableCommand>(arguments, std::string("/nonexistent/mem"));
}

/// Of the mixed example, with a station at a port of each kind of chip.
CommandRun withStations(Words const& arguments) {
    Words words = {mixed,
                   "addresses",
                   "--simulate",
                   "--station",
                   "0.1=02:00:00:00:00:01",
                   "--station",
                   "3.20=02:00:00:00:00:02/5"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return run(words);
}

json switchOf(CommandRun const& shown, unsigned id) {
    json const whole = json::parse(shown.out);
    for (json const& part : whole["switches"]) {
        if (part["switch"] == id) {
            return part;
        }
    }
    return nullptr;
}

} // namespace

TEST(TableCommandTest, AddressesTellWhereStationsWereHeard) {
    CommandRun const shown = withStations({});
    EXPECT_EQ(shown.status, ExitStatus::success) << shown.errors;
    EXPECT_THAT(shown.out, HasSubstr("switch 0  88e6096  ATU\naddress "));
    EXPECT_THAT(shown.out, ContainsRegex("\n02:00:00:00:00:01 5 +learnt FID [0-9]+, age 7 of 7 +1\n"));
    EXPECT_THAT(shown.out, HasSubstr("\nswitch 1  88e6096  ATU\nno entries\n"));
    EXPECT_THAT(shown.out, ContainsRegex("\n02:00:00:00:00:02 5 +learnt destination 20, age fresh +20\n"));
}

TEST(TableCommandTest, FiltersLeaveWhatIsAskedForAndSayWhatNot) {
    CommandRun const byPort = withStations({"--port", "0.1", "--json"});
    EXPECT_THAT(json::parse(byPort.out)["switches"], SizeIs(1));
    EXPECT_THAT(switchOf(byPort, 0)["entries"], SizeIs(1));
    CommandRun const otherPort = withStations({"--port", "0.2"});
    EXPECT_EQ(otherPort.status, ExitStatus::success);
    EXPECT_THAT(otherPort.out, HasSubstr("\nno entry that is asked for, 1 other\n"));
    CommandRun const byVlan = withStations({"--vlan", "0x5", "--json"});
    EXPECT_THAT(switchOf(byVlan, 3)["entries"], SizeIs(1));
    EXPECT_THAT(switchOf(withStations({"--vlan", "6", "--json"}), 3)["entries"], IsEmpty());
    CommandRun const byAddress = withStations({"--address", "02:00:00:00:00:02", "--json"});
    EXPECT_THAT(switchOf(byAddress, 0)["entries"], IsEmpty());
    EXPECT_EQ(switchOf(byAddress, 0)["leftOut"], 1);
    EXPECT_THAT(switchOf(byAddress, 3)["entries"], SizeIs(1));
    CommandRun const ofSwitch = withStations({"--switch", "3", "--json"});
    EXPECT_THAT(json::parse(ofSwitch.out)["switches"], SizeIs(1));
}

TEST(TableCommandTest, AGroupIsFoundByItsIpv4Address) {
    CommandRun const shown = run({mixed, "groups", "--address", "239.30.0.6", "--simulate", "--json"});
    EXPECT_EQ(shown.status, ExitStatus::success) << shown.errors;
    json const groups = switchOf(shown, 3)["entries"];
    ASSERT_THAT(groups, SizeIs(1));
    EXPECT_EQ(groups[0]["address"], "01:00:5e:1e:00:06");
    EXPECT_EQ(groups[0]["static"], true);
    EXPECT_EQ(groups[0]["ports"], (json::array({{{"port", 21}, {"what", ""}}})));
    EXPECT_EQ(groups[0]["vlans"], json::array({{{"vlan", 6}, {"hexadecimal", "0x6"}, {"written", "6"}}}));
}

TEST(TableCommandTest, VlansHaveIdsInAllWritingsAndTagsByPort) {
    auto const xml = reference_host::XmlDocument::fromFile(EXAMPLES_FOLDER "/trap-access-point.xml");
    board::BoardReading const document(*xml);
    chips::ChipTable::Row row;
    row.vlans = {2, 20, 33};
    std::ostringstream text;
    switchctl::table::TableText::print({row}, document, text);
    EXPECT_EQ(text.str(),
              "VLAN                                  ports\n2, 20 (0x14, written \"14\"), 33 (0x21) -\n");
    CommandRun const shown = run({mixed, "vlans", "--vlan", "5", "--switch", "0", "--simulate", "--json"});
    json const entries = switchOf(shown, 0)["entries"];
    ASSERT_THAT(entries, SizeIs(1));
    EXPECT_EQ(entries[0]["ports"], (json::array({{{"port", 1}, {"what", "untagged"}},
                                                 {{"port", 2}, {"what", "untagged"}},
                                                 {{"port", 10}, {"what", "tagged"}}})));
}

TEST(TableCommandTest, WhatAChipDoesNotHaveIsSaid) {
    CommandRun const shown = run({mixed, "spanning-tree", "--simulate"});
    EXPECT_EQ(shown.status, ExitStatus::success) << shown.errors;
    EXPECT_THAT(shown.out,
                HasSubstr("switch 3  vsc7390  no such table\nno entries\na VSC7390 has no spanning-tree"));
    EXPECT_THAT(shown.out, ContainsRegex("\nports' own +forwarding 0-10\n"));
    CommandRun const ofPort = run({mixed, "spanning-tree", "--port", "0.10", "--simulate"});
    EXPECT_THAT(ofPort.out, ContainsRegex("\nports' own +forwarding 10\n"));
}

TEST(TableCommandTest, RoutesAreByPortAndTrunksByEntry) {
    CommandRun const routes = run({mixed, "routes", "--switch", "0", "--simulate", "--json"});
    json const entries = switchOf(routes, 0)["entries"];
    ASSERT_THAT(entries, SizeIs(11));
    EXPECT_EQ(entries[1]["from"], 1);
    CommandRun const trunks = run({mixed, "trunks", "--switch", "3", "--simulate"});
    EXPECT_THAT(trunks.out, HasSubstr("switch 3  vsc7390  destination and aggregation masks\n"));
    EXPECT_THAT(trunks.out, HasSubstr("\ncode 0"));
}

TEST(TableCommandTest, NoLineIsLongerThan80Columns) {
    for (std::string const& table : switchctl::table::TableFilter::getNames()) {
        std::istringstream lines(run({mixed, table, "--simulate", "--station", "0.1=02:00:00:00:00:01"}).out);
        std::string line;
        std::getline(lines, line); // has the path
        while (std::getline(lines, line)) {
            EXPECT_LE(line.size(), 80U) << line;
        }
    }
}

TEST(TableCommandTest, NothingIsFlushedWithoutConsent) {
    CommandRun const refused = withStations({"--flush"});
    EXPECT_EQ(refused.status, ExitStatus::notConfirmed);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.errors, "switchctl: nothing was flushed, since --yes is missing; it would have been\n"
                              "  switch 0: 02:00:00:00:00:01, VLAN 5, port 1\n"
                              "  switch 3: 02:00:00:00:00:02, VLAN 5, port 20\n");
    EXPECT_THAT(withStations({"--flush", "--port", "0.2"}).errors,
                HasSubstr("since --yes is missing; it would have been no address\n"));
}

TEST(TableCommandTest, AFlushTellsWhatIsGone) {
    CommandRun const flushed = withStations({"--flush", "--yes"});
    EXPECT_EQ(flushed.status, ExitStatus::success) << flushed.errors;
    EXPECT_THAT(flushed.out, ContainsRegex("switch 0  88e6096  1 flushed, 0 static kept\n"
                                           "address .*\n02:00:00:00:00:01 5 "));
    CommandRun const ofPort = withStations({"--flush", "--port", "3.20", "--yes", "--json"});
    json const part = switchOf(ofPort, 3);
    EXPECT_THAT(part["flushed"], SizeIs(1));
    EXPECT_THAT(part["there"], IsEmpty());
    EXPECT_EQ(switchOf(ofPort, 0), nullptr);
}

TEST(TableCommandTest, AChipThatDoesNotAnswerIsUnread) {
    CommandRun const shown = run({mixed, "vlans", "--simulate", "--fault", "unplugged:0"});
    EXPECT_EQ(shown.status, ExitStatus::registerFailed);
    EXPECT_THAT(shown.out, HasSubstr("switch 0  88e6096  unread\n\nswitch 1  88e6096  VTU\n"));
    EXPECT_THAT(shown.errors, HasSubstr("switchctl: switch 0: no 88e6096 answers"));
    CommandRun const asJson = run({mixed, "vlans", "--simulate", "--fault", "unplugged:0", "--json"});
    EXPECT_EQ(switchOf(asJson, 0), (json{{"switch", 0}, {"chip", "88e6096"}, {"unread", true}}));
    EXPECT_THAT(json::parse(asJson.out)["unread"], SizeIs(1));
    // It says what it is, and is gone before its table is read; what is read then looks like an empty one.
    CommandRun const half =
        run({mixed, "vlans", "--switch", "0", "--simulate", "--fault", "access-fails:100"});
    EXPECT_THAT(half.out, HasSubstr("switch 0  88e6096  unread\n"));
    CommandRun const flushed = withStations({"--flush", "--yes", "--fault", "unplugged:0"});
    EXPECT_EQ(flushed.status, ExitStatus::registerFailed);
    EXPECT_THAT(flushed.out, HasSubstr("switch 0  88e6096  unread: what is flushed of it is not known\n"));
    EXPECT_THAT(flushed.out, HasSubstr("switch 3  vsc7390  1 flushed, 0 static kept\n"));
    EXPECT_THAT(withStations({"--flush", "--fault", "unplugged:0"}).errors,
                HasSubstr("\n  switch 0: unread, whatever it has learnt\n"));
}

TEST(TableCommandTest, RefusesFiltersThatATableHasNothingFor) {
    std::vector<std::pair<Words, std::string>> const cases = {
        {{"routes", "--vlan", "5"}, "--vlan: is not for routes, which are the same in all VLANs\n"},
        {{"trunks", "--vlan", "5"}, "--vlan: is not for trunks, which are the same in all VLANs\n"},
        {{"vlans", "--address", "02:00:00:00:00:01"},
         "--address: is not for vlans, which have no addresses\n"},
        {{"vlans", "--flush", "--yes"}, "--flush: is for addresses, not for vlans\n"},
        {{"addresses", "--flush", "--address", "02:00:00:00:00:01"},
         "--flush: goes by --switch, --port and --vlan, not by --address\n"},
        {{"vlans", "--vlan", "4096"}, "--vlan: \"4096\": no VLAN id, which is 0 to 4095, or 0x0 to 0xfff\n"},
        {{"groups", "--address", "1.2.3"}, "--address: \"1.2.3\": neither an address, "},
        {{"addresses", "--port", "1"}, "--port: \"1\": not of the form SWITCH.PORT\n"},
        {{"addresses", "--simulate", "--station", "0.1"},
         "--station: \"0.1\": not of the form SWITCH.PORT=MAC[/VID]\n"},
        {{"addresses", "--simulate", "--station", "9.1=02:00:00:00:00:01"},
         "the simulated board has no port 9.1\n"},
        {{"addresses", "--port", "0.11"}, "--port 0.11: switch 0 (88e6096) has the ports 0 to 10\n"},
        {{"addresses", "--switch", "7"}, "--switch 7: " + mixed + " has no switch 7\n"}};
    for (auto const& [words, text] : cases) {
        Words all = {mixed};
        all.insert(all.end(), words.begin(), words.end());
        CommandRun const refused = run(all);
        EXPECT_EQ(refused.status, ExitStatus::usage) << text;
        EXPECT_THAT(refused.errors, HasSubstr(text));
        EXPECT_EQ(refused.out, "");
    }
    EXPECT_EQ(run({mixed, "adresses"}).status, ExitStatus::usage);
    EXPECT_EQ(run({mixed, "addresses", "--yes"}).status, ExitStatus::usage);
    EXPECT_EQ(run({mixed, "vlans"}).status, ExitStatus::noHardware);
    EXPECT_EQ(run({"/nonexistent/board.xml", "vlans"}).status, ExitStatus::badDocument);
}
