// `switchctl doctor` as it is typed.

#include "switchctl/doctor/DoctorCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "board/BoardReading.hpp"
#include "simulation/AccessLog.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::doctor::DoctorCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char const* mixed = EXAMPLES_FOLDER "/trap-mixed.xml";
constexpr char const* minimalBoard = EXAMPLES_FOLDER "/trap-minimal.xml";
constexpr char const* video = EXAMPLES_FOLDER "/trap-video-switch.xml";

CommandRun doctor(std::vector<std::string> words) {
    words.insert(words.begin(), "doctor");
    return CommandRun::of<DoctorCommand>(words, std::string("/nonexistent/mem"));
}

std::string boardWith(std::string const& switches) {
    return "<board><switches>" + switches + "</switches></board>";
}

} // namespace

TEST(DoctorCommandTest, ABoardThatAnswersIsWell) {
    CommandRun const bold = doctor({minimalBoard, "--simulate", "--allow-writes"});
    EXPECT_EQ(bold.status, ExitStatus::success) << bold.errors;
    EXPECT_EQ(bold.errors, "");
    CommandRun const run = doctor({minimalBoard, "--simulate"});
    EXPECT_EQ(run.status, ExitStatus::notLookedAt);
    EXPECT_EQ(run.errors, "switchctl: " + std::string(minimalBoard) +
                              ": not every chip was asked what it is (--allow-writes does)\n");
    EXPECT_EQ(run.out,
              "read of fresh models of " + std::string(minimalBoard) +
                  ":\n"
                  "  MDIO address 0          register 0 0x0000  register 2 0xffff  register 3 0xffff\n"
                  "                          like an 88E6096 in multi-chip mode\n"
                  "  MDIO addresses 1 to 31  register 0 0xffff  register 2 0xffff  register 3 0xffff\n"
                  "                          nothing answers\n"
                  "switch 0 (88e6096): answers at MDIO address 0 like an 88E6096\n"
                  "not read: identifiers, straps and PHYs inside the 88E6096: to read them, the\n"
                  "  chip's command register is written; see --allow-writes\n"
                  "not read: the window of a VSC7390: the document has none\n");
}

TEST(DoctorCommandTest, WhatIsNotLookedAtIsNamed) {
    json const shy = json::parse(doctor({mixed, "--simulate", "--json"}).out);
    EXPECT_EQ(shy.at("unread").size(), 2U) << shy;
    json const bold = json::parse(doctor({mixed, "--simulate", "--allow-writes", "--json"}).out);
    EXPECT_TRUE(bold.at("unread").empty()) << bold;
    EXPECT_THAT(bold.at("switches").at(1).at("text").get<std::string>(),
                HasSubstr("port 0/SwitchIdentifier 0x0980"));
    // A bus that says nothing says nothing of each chip.
    json const dead = json::parse(doctor({mixed, "--simulate", "--fault", "mdio-stuck:40", "--json"}).out);
    EXPECT_TRUE(dead.at("switches").at(1).at("answers").is_null()) << dead;
    EXPECT_EQ(dead.at("switches").at(0).at("answers"), true) << dead;
    EXPECT_THAT(dead.at("unread").at(0).get<std::string>(), HasSubstr("MDIO addresses "));
}

TEST(DoctorCommandTest, TheDocumentOfAnotherBoardShows) {
    TemporaryFile const wanted(boardWith("<switch id='4' switchModel='88e6096'/>"));
    TemporaryFile const real(boardWith("<switch id='7' switchModel='88e6096'/>"));
    CommandRun const run = doctor({wanted.path(), "--simulate=" + real.path()});
    EXPECT_EQ(run.status, ExitStatus::switchMissing);
    EXPECT_THAT(run.out, HasSubstr("switch 4 (88e6096): does not answer as it should\n"));
    EXPECT_THAT(run.out, HasSubstr("switch 4: other address: nothing answers at MDIO address 4"));
    EXPECT_THAT(run.out, HasSubstr("\n  measure next:\n  - "));
    EXPECT_EQ(run.errors, "switchctl: " + wanted.path() + ": not every switch answers as it should\n");
}

TEST(DoctorCommandTest, AChipThatHasNoPlaceIsNamed) {
    TemporaryFile const board(boardWith("<switch id='3' switchModel='vsc7390'/>"
                                        "<switch id='5' switchModel='vsc7390'/>"
                                        "<switch id='2' switchModel='88e6096'/>"
                                        "<switch id='40' switchModel='88e6096'/>"));
    json const document = json::parse(doctor({board.path(), "--simulate", "--json"}).out);
    json const& switches = document.at("switches");
    EXPECT_EQ(switches.at(0).at("answers"), true) << document;
    EXPECT_EQ(switches.at(1).at("answers"), false);
    EXPECT_EQ(switches.at(2).at("answers"), true);
    EXPECT_EQ(switches.at(3).at("answers"), false);
    EXPECT_EQ(document.at("findings").at(0).at("cause"), "no place");
    EXPECT_EQ(document.at("findings").at(1).at("cause"), "no place");
}

TEST(DoctorCommandTest, ADocumentWithoutAKnownSwitchIsNotWell) {
    TemporaryFile const empty("<board/>");
    EXPECT_EQ(doctor({empty.path(), "--simulate"}).status, ExitStatus::switchMissing);
    EXPECT_EQ(doctor({empty.path(), "--simulate"}).errors,
              "switchctl: " + empty.path() + ": no switch in the document\n");
    TemporaryFile const other(boardWith("<switch id='1' switchModel='abacus'/>"));
    CommandRun const run = doctor({other.path(), "--simulate"});
    EXPECT_EQ(run.status, ExitStatus::switchMissing);
    EXPECT_THAT(run.out, HasSubstr("switch 1 (abacus): not looked at: no chip \"abacus\" is known\n"));
}

TEST(DoctorCommandTest, TheSerialLineNeedsNoMemoryDevice) {
    CommandRun const run = doctor({video, "--serial", "--simulate"});
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    EXPECT_THAT(run.out, HasSubstr("answers over the serial line; system/CHIPID 0x07390000\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("MDIO")));
    CommandRun const none = doctor({video, "--serial", "--device", "/nonexistent/tty"});
    EXPECT_EQ(none.status, ExitStatus::noHardware);
    EXPECT_THAT(none.errors, HasSubstr("/nonexistent/tty: no serial line can be opened there"));
}

TEST(DoctorCommandTest, WhatIsOutOfReachIsRefused) {
    CommandRun const run = doctor({minimalBoard});
    EXPECT_EQ(run.status, ExitStatus::noHardware);
    EXPECT_THAT(run.errors, HasSubstr("/nonexistent/mem: No such file or directory (the chips are reached"));
    EXPECT_EQ(doctor({"/nonexistent.xml", "--simulate"}).status, ExitStatus::badDocument);
    EXPECT_EQ(doctor({minimalBoard, "--serial", "--simulate"}).status, ExitStatus::noHardware);
}

TEST(DoctorCommandTest, AFaultThatDoesNotFitIsRefused) {
    auto const refusal = [](std::string const& fault) {
        CommandRun const run = doctor({mixed, "--simulate", "--fault", fault});
        EXPECT_EQ(run.status, ExitStatus::usage) << fault;
        return run.errors;
    };
    EXPECT_THAT(refusal("unplugged:7"), HasSubstr("--fault: \"unplugged:7\": the board has no switch 7\n"));
    EXPECT_THAT(refusal("single-chip:3"), HasSubstr("switch 3 is not an 88E6096"));
    EXPECT_THAT(refusal("bytes-turned:0"), HasSubstr("switch 0 is not a VSC7390"));
    EXPECT_THAT(refusal("vtu-stuck:3"), HasSubstr("--fault: \"vtu-stuck:3\": the chip has no such unit"));
    EXPECT_THAT(refusal("phy-absent:3.24"), HasSubstr("no such PHY"));
    EXPECT_THAT(refusal("phy-absent:3"), HasSubstr("\"3\" is no port, SWITCH.PORT"));
    EXPECT_THAT(refusal("serial-silent"), HasSubstr("nothing goes over a simulated serial line here"));
    EXPECT_THAT(refusal("unplugged"), HasSubstr("not of the form unplugged:N"));
    EXPECT_THAT(refusal("mdio-low:1"), HasSubstr("mdio-low takes no number"));
    EXPECT_THAT(refusal("all-ones:0"), HasSubstr("\"0\" is no number from 1 on"));
    EXPECT_THAT(refusal("all-ones:x"), HasSubstr("\"x\" is no number"));
    EXPECT_THAT(refusal("gremlins"),
                HasSubstr("--fault: \"gremlins\": no such fault; \"switchctl faults\" lists them"));
}
