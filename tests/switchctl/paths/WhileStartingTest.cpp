// `switchctl paths --while-starting` as it is typed.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "switchctl/paths/PathsCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::paths::PathsCommand;
using test_support::CommandRun;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

std::string pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}

CommandRun start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"paths", "--while-starting"});
    return CommandRun::of<PathsCommand>(arguments, std::string("/nonexistent/mem"));
}

json startJson(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    return json::parse(start(arguments).out);
}

} // namespace

TEST(WhileStartingTest, AnAccessPointIsOpenFromTheResetUntilTheLastWrites) {
    json const starting = startJson({pathOf("trap-access-point")});
    EXPECT_EQ(starting["warm"], json());
    EXPECT_EQ(starting["writes"], 349);
    EXPECT_EQ(starting["nanoseconds"], 80793600);
    EXPECT_EQ(starting["longest"], 80793600);
    // Each port of the chip, until its own mode; port 0 is the first.
    std::map<std::string, std::size_t> closed;
    for (json const& interval : starting["intervals"]) {
        json const& last = interval["closed"];
        if (interval["opened"].is_null() && last["register"] == "PortControl2") {
            EXPECT_EQ(interval["nanoseconds"], last["nanoseconds"]);
            closed.emplace(last["unit"], last["write"]);
        }
    }
    EXPECT_THAT(closed, SizeIs(11));
    EXPECT_EQ(closed["port 0"], 297U);
    EXPECT_EQ(closed["port 10"], 349U);
}

TEST(WhileStartingTest, AnAccessPointThatStartsAgainIsInterruptedAndNothingOpens) {
    std::string const path = pathOf("trap-access-point");
    json const starting = startJson({path, "--warm", path});
    EXPECT_EQ(starting["warm"], path);
    EXPECT_THAT(starting["intervals"], IsEmpty());
    EXPECT_EQ(starting["pairs"], 0);
    EXPECT_EQ(starting["interrupted"]["writes"], 298);
    EXPECT_EQ(starting["interrupted"]["first"]["write"], 2);
    EXPECT_EQ(starting["interrupted"]["first"]["register"], "VTUOperation");
    EXPECT_EQ(starting["interrupted"]["last"]["write"], 315);
    // Ports that are not "forwarding", of which it warns without --while-starting, too.
    EXPECT_EQ(starting["pairsLeft"], 14);
    CommandRun const text = start({path, "--warm", path});
    EXPECT_EQ(text.status, ExitStatus::documentWarnings);
    EXPECT_THAT(text.out, HasSubstr("14 pairs of ports open in the end: \"switchctl paths " + path +
                                    " --live\" shows them\n"));
    EXPECT_THAT(text.out, Not(HasSubstr("rests on")));
}

// The VLANs are cleared first and closed later; the trunk comes after the VLANs.
TEST(WhileStartingTest, AVideoSwitchThatStartsAgainOpensItsVlansAndLoopsItsTrunk) {
    std::string const path = pathOf("trap-video-switch");
    CommandRun const starting = start({path, "--warm", path});
    EXPECT_EQ(starting.status, ExitStatus::documentWarnings);
    EXPECT_THAT(starting.out,
                HasSubstr("warning: open for 2400 ns\n"
                          "    since write 5 at 3000 ns, 2/analyser/VLANACCESS:VLAN_SRC_CHECK = 0x0, "
                          "Ports = 0x0, CMD = 0x3\n"
                          "    until write 29 at 5400 ns, 2/analyser/SRCMASKS_23:Ports = 0x0\n"
                          "  2.23 (tagged 2)\n"
                          "      reach 2.1 2.2 2.4 2.5 2.6 2.7 2.8 2.9 2.10 2.11 2.12 2.13 2.14 2.15\n"));
    EXPECT_THAT(starting.out,
                HasSubstr("warning: open for 37700 ns\n"
                          "    since write 223 at 357600 ns, 2/analyser/SRCMASKS_22:Ports = 0x80fff6\n"
                          "    until write 252 at 395300 ns, 2/analyser/SRCMASKS_22:Ports = 0xfff6\n"
                          "  2.22 (untagged, tagged 0 1 18 4094)\n"
                          "      reach 2.23\n"));
    EXPECT_THAT(starting.out, HasSubstr("\n  V7 (likely): entries of the VLAN table that were never "));
}

TEST(WhileStartingTest, AVideoSwitchAfterAResetOpensNothing) {
    CommandRun const starting = start({pathOf("trap-video-switch")});
    EXPECT_EQ(starting.status, ExitStatus::success);
    EXPECT_THAT(starting.out,
                EndsWith("/trap-video-switch.xml: after the reset, 1322 writes in 7704700 ns: 0 "
                         "pairs of ports open in 0 intervals, for 0 ns at most; 2500470 "
                         "frames asked\n"));
}

TEST(WhileStartingTest, WhatIsOpenInTheEndIsAnError) {
    CommandRun const starting = start({pathOf("trap-minimal")});
    EXPECT_EQ(starting.status, ExitStatus::badDocument);
    EXPECT_THAT(starting.out, HasSubstr("96 pairs of ports open in the end: "));
}

TEST(WhileStartingTest, OptionsThatAskForSomethingElseAreRefused) {
    std::string const path = pathOf("trap-minimal");
    for (std::vector<std::string> const& other :
         {std::vector<std::string>{"--live"}, {"--cable", "0.8=0.9"}, {"--between", "0.0", "0.1"}}) {
        std::vector<std::string> arguments = {path};
        arguments.insert(arguments.end(), other.begin(), other.end());
        CommandRun const refused = start(arguments);
        EXPECT_EQ(refused.status, ExitStatus::usage);
        EXPECT_THAT(refused.errors, HasSubstr(" excludes --"));
        EXPECT_THAT(refused.errors, HasSubstr(other.front()));
        EXPECT_THAT(refused.errors, HasSubstr("--while-starting"));
    }
    CommandRun const cold =
        CommandRun::of<PathsCommand>({"paths", path, "--warm", path}, std::string("/nonexistent/mem"));
    EXPECT_EQ(cold.status, ExitStatus::usage);
    EXPECT_THAT(cold.errors, HasSubstr("--warm requires --while-starting"));
    EXPECT_EQ(start({path, "--warm", "/nonexistent.xml"}).status, ExitStatus::badDocument);
}
