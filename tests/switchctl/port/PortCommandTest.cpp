// `switchctl port` as it is typed.

#include "switchctl/port/PortCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::port::PortCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr char const* mixed = EXAMPLES_FOLDER "/trap-mixed.xml";

/// \param arguments behind the document.
CommandRun port(std::string const& arguments, std::string const& document = mixed) {
    std::istringstream words("port " + document + " " + arguments);
    return CommandRun::of<PortCommand>({std::istream_iterator<std::string>(words), {}},
                                       std::string("/nonexistent/mem"));
}

std::string refusalOf(std::string const& arguments) {
    CommandRun const run = port(arguments + " --simulate");
    EXPECT_EQ(run.status, ExitStatus::usage) << arguments;
    EXPECT_EQ(run.out, "") << arguments;
    return run.errors;
}

/// "UNIT/REGISTER:FIELD" to what it was and what it is.
std::map<std::string, std::pair<unsigned, unsigned>> changesOf(json const& document) {
    std::map<std::string, std::pair<unsigned, unsigned>> changes;
    for (json const& change : document.at("changes")) {
        changes[change.at("unit").get<std::string>() + "/" + change.at("register").get<std::string>() + ":" +
                change.at("field").get<std::string>()] = {change.at("before"), change.at("after")};
    }
    return changes;
}

} // namespace

TEST(PortCommandTest, DownDisablesAPortOfAn88E6096AndNothingElse) {
    CommandRun const run = port("0.1 down --simulate");
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    EXPECT_EQ(run.out, "port 0.1, 88E6096, of the models of " + std::string(mixed) +
                           ": down\n"
                           "state: disabled; before: forwarding\n"
                           "registers: 3 changed, 257 compared\n"
                           "  port 1/PhysicalControl  ForcedLink  0x0 -> 0x1\n"
                           "  port 1/PortControl      PortState   0x3 -> 0x0\n"
                           "  phy 1/Control           PowerDown   0x0 -> 0x1\n");
}

TEST(PortCommandTest, SeveralSettingsAtOnce) {
    json const document =
        json::parse(port("0.1 speed 10 half flow-control off mdix auto down --simulate --json").out);
    EXPECT_EQ(document.at("settings"), (json{"speed 10 half", "flow-control off", "mdix auto", "down"}));
    EXPECT_EQ(document.at("stateAfter"), "disabled");
    EXPECT_EQ(document.at("failure"), nullptr);
    auto const changes = changesOf(document);
    EXPECT_EQ(changes.at("port 1/PhysicalControl:ForceSpd"), std::make_pair(3U, 0U));
    EXPECT_EQ(changes.at("port 1/PhysicalControl:ForcedFC"), std::make_pair(0U, 1U));
    EXPECT_EQ(changes.count("port 1/PhysicalControl:FCValue"), 0U);
    EXPECT_EQ(changes.at("port 1/PhysicalControl:ForcedDpx"), std::make_pair(0U, 1U));
    EXPECT_EQ(changes.count("port 1/PhysicalControl:DpxValue"), 0U);
    EXPECT_EQ(changes.at("port 1/PortControl:PortState"), std::make_pair(3U, 0U));
}

TEST(PortCommandTest, ASpeedAloneNeitherStartsNorStopsThePort) {
    json const up = json::parse(port("0.1 speed 100 --simulate --json").out);
    EXPECT_EQ(up.at("stateBefore"), "forwarding");
    EXPECT_EQ(up.at("stateAfter"), "forwarding");
    json const stopped = json::parse(port("3.4 speed 100 half --simulate --json").out);
    EXPECT_EQ(stopped.at("stateBefore"), "stopped");
    EXPECT_EQ(stopped.at("stateAfter"), "stopped");
    auto const changes = changesOf(stopped);
    EXPECT_EQ(changes.at("port 4/MAC_CFG:CLK_SEL"), std::make_pair(0U, 2U));
    EXPECT_EQ(changes.count("port 4/MAC_CFG:FDX"), 0U) << "half duplex of a VSC7390";
}

// Ports 1, 2, 20, 21 and 22 are those that the start-up has up.
TEST(PortCommandTest, AVsc7390sPortIsOpenedToThoseThatAreUpAndTheyToIt) {
    json const document = json::parse(port("3.4 up speed 1000 --simulate --json").out);
    EXPECT_EQ(document.at("stateBefore"), "stopped");
    EXPECT_EQ(document.at("stateAfter"), "receiving and sending");
    auto const changes = changesOf(document);
    EXPECT_EQ(changes.at("analyser/SRCMASKS_4:Ports"), std::make_pair(0U, 0x700006U));
    EXPECT_EQ(changes.at("analyser/SRCMASKS_20:Ports"), std::make_pair(0x600006U, 0x600016U));
    EXPECT_EQ(changes.count("analyser/SRCMASKS_3:Ports"), 0U) << "is not up";
}

TEST(PortCommandTest, LearningIsAVsc7390s) {
    auto const changes = changesOf(json::parse(port("3.1 learning off --simulate --json").out));
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_THAT(changes.begin()->first, StartsWith("analyser/LEARNMASK"));
}

TEST(PortCommandTest, AnotherDocumentsModels) {
    TemporaryFile const other("<switches><switch id='0' switchModel='88e6096'>"
                              "<port id='1' connectedTo='external' portStatus='forwarding'/>"
                              "</switch></switches>");
    CommandRun const run = port("0.1 down --simulate=" + other.path());
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    EXPECT_THAT(run.out, StartsWith("port 0.1, 88E6096, of the models of " + other.path() + ": down\n"));
}

TEST(PortCommandTest, WhatCannotBeSetIsRefused) {
    EXPECT_EQ(refusalOf("3.4 up"), "switchctl: up: port 3.4 has never had a speed; say up speed 10, 100 or "
                                   "1000\n");
    EXPECT_EQ(refusalOf("3.1 mdix on"), "switchctl: 3.1 (VSC7390): the library cannot set mdix; its PHYs are "
                                        "no part of the chip\n");
    EXPECT_EQ(refusalOf("0.10 mdix on"), "switchctl: 0.10 (88E6096): the library cannot set mdix; there are "
                                         "PHYs of the chip on ports 0 to 7 only\n");
    EXPECT_EQ(refusalOf("0.1 learning on"),
              "switchctl: 0.1 (88E6096): the library cannot set learning on this chip\n");
    EXPECT_EQ(refusalOf("0.7 speed 1000"), "switchctl: 0.7 (88E6096): speed 1000 cannot be; ports 0 to 7 are "
                                           "Fast Ethernet, for 10 and 100\n");
}

TEST(PortCommandTest, WhatCannotBeUnderstoodIsRefused) {
    EXPECT_THAT(refusalOf("0.1 sideways"),
                HasSubstr("\"sideways\" is no setting of a port; there are down, "));
    EXPECT_THAT(refusalOf("0.1 speed 99"), HasSubstr("speed: \"99\"; it takes 10, 100, 1000\n"));
    EXPECT_THAT(refusalOf("0.1 up speed"),
                HasSubstr("speed: its value is missing; it takes 10, 100, 1000\n"));
    EXPECT_THAT(refusalOf("0.1 up down"), HasSubstr("up and down: only one of them, once\n"));
    EXPECT_THAT(refusalOf("0.1 mdix on mdix off"), HasSubstr("mdix: twice\n"));
    EXPECT_THAT(refusalOf("0.1 speed 10 speed 10"), HasSubstr("speed: twice\n"));
    EXPECT_THAT(refusalOf("0.1 up flow-control on"),
                HasSubstr("together with the speed, which is missing\n"));
    EXPECT_THAT(refusalOf("0.1"), HasSubstr("SETTING is required"));
    EXPECT_THAT(refusalOf("0-1 up"), HasSubstr("\"0-1\" is not of the form SWITCH.PORT"));
    EXPECT_THAT(refusalOf("9.1 up"), HasSubstr("trap-mixed.xml has no switch 9 of a kind that is known\n"));
    EXPECT_THAT(refusalOf("0.11 up"), HasSubstr("0.11: " + std::string(mixed) + " has no such port\n"));
    EXPECT_EQ(port("0.1 up --simulate", "/nonexistent.xml").status, ExitStatus::badDocument);
}

TEST(PortCommandTest, NothingIsWrittenToABoardWithoutConsent) {
    CommandRun const run = port("3.1 down");
    EXPECT_EQ(run.status, ExitStatus::notConfirmed);
    EXPECT_THAT(run.errors, StartsWith("switchctl: nothing was written, since --yes is missing; port 3.1 "
                                       "would have been set: down\n  and the source masks of all ports"));
    EXPECT_THAT(port("0.1 down").errors, EndsWith("would have been set: down\n"));
    CommandRun const agreed = port("3.1 down --yes");
    EXPECT_EQ(agreed.status, ExitStatus::noHardware);
    EXPECT_THAT(agreed.errors, HasSubstr("/nonexistent/mem: No such file or directory"));
}

TEST(PortCommandTest, AChipThatDoesNotAnswerIsNotSet) {
    CommandRun const run = port("0.1 down --simulate --fault unplugged:0");
    EXPECT_EQ(run.status, ExitStatus::registerFailed);
    EXPECT_EQ(run.errors, "switchctl: port 0/SwitchIdentifier could not be read\n");
    CommandRun const later = port("3.1 speed 100 --simulate --fault all-ones:2500");
    EXPECT_EQ(later.status, ExitStatus::registerFailed);
    EXPECT_THAT(later.errors, StartsWith("switchctl: nothing was set: 3.1 could not be read: "));
}

TEST(PortCommandTest, WhatWasNotReadAfterwardsIsUnread) {
    CommandRun const run = port("0.1 down --simulate --fault all-zeros:9000");
    EXPECT_EQ(run.status, ExitStatus::registerFailed);
    EXPECT_THAT(run.out, HasSubstr("\nstate: unread; before: forwarding\nregisters: 0 changed, 0 compared\n"
                                   "unread: no 88E6096 answers: port 0/SwitchIdentifier reads 0x0000\n"));
    json const document = json::parse(port("0.1 down --simulate --json --fault all-zeros:9000").out);
    EXPECT_EQ(document.at("stateAfter"), "unread");
    EXPECT_THAT(document.at("changes"), IsEmpty());
    EXPECT_EQ(document.at("compared"), 0);
    EXPECT_THAT(document.at("unread").get<std::string>(), HasSubstr("no 88E6096 answers"));
}

TEST(PortCommandTest, AWaitWithoutEndIsEnded) {
    CommandRun const run = port("3.1 speed 100 --simulate --timeout 1 --fault arbiter-stuck:3");
    EXPECT_EQ(run.status, ExitStatus::noProgress);
    EXPECT_EQ(run.errors, "switchctl: 3.1: no progress for 1 s, waiting for switch 3 (vsc7390), "
                          "arbiter/ARBEMPTY\n");
}
