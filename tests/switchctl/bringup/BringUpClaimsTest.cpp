// What bring-up says about itself: findings, errors, misuse, and what it reads back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "switchctl/Program.hpp"
#include "switchctl/bringup/BringUpCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using simulation::SimulatedBoard;
using switchctl::bringup::BringUpCommand;
using switchctl::bringup::DocumentChecks;
using switchctl::bringup::FindingCounts;
using test_support::CommandRun;
using test_support::minimal;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// The program, with its checks.
CommandRun program(std::vector<std::string> words) {
    words.insert(words.begin(), "bring-up");
    std::ostringstream out;
    std::ostringstream errors;
    ExitStatus const status = switchctl::Program("/nonexistent/mem").run(words, out, errors);
    return {status, out.str(), errors.str()};
}

/// The command on a board that was disturbed before start-up.
CommandRun disturbed(std::vector<std::string> words, std::function<void(SimulatedBoard&)> const& disturb) {
    words.insert(words.begin(), "bring-up");
    DocumentChecks const none = [](reference_host::XmlDocument&) { return FindingCounts(); };
    return CommandRun::of<BringUpCommand>(words, std::string("/nonexistent/mem"), none, disturb);
}

TEST(BringUpClaimsTest, CountsTheFindingsOfTheChecksFirst) {
    CommandRun const run = program({EXAMPLES_FOLDER "/trap-mixed.xml", "--simulate"});
    EXPECT_EQ(run.status, ExitStatus::errorsFound) << run.errors;
    EXPECT_THAT(run.out, StartsWith("check: 1 error, 9 warnings, 13 notes; \"switchctl check " EXAMPLES_FOLDER
                                    "/trap-mixed.xml\" shows them\n"));
}

TEST(BringUpClaimsTest, AnErrorOfTheChecksHasAStatusOfItsOwn) {
    TemporaryFile const document(
        "<board><switches><switch id='0' switchModel='88e6096'>"
        "<port id='0' connectedTo='cpu' portStatus='forwarding'/></switch></switches>"
        "<vlan id='a' typeOfVlan='tagBasedVlan'>"
        "<port switchId='0' portId='0' ingress='addTag' egress='stripTag'/></vlan></board>");
    CommandRun const run = program({document.path(), "--simulate"});
    EXPECT_EQ(run.status, ExitStatus::errorsFound);
    EXPECT_THAT(run.out, ContainsRegex("^check: [1-9][0-9]* error"));
    EXPECT_THAT(run.out, HasSubstr("VLAN 10 (0xa, written \"a\")  tag-based: no members\n"));
    EXPECT_THAT(run.errors, HasSubstr("the checks found errors"));
    EXPECT_EQ(program({document.path(), "--simulate", "--accept-errors"}).status, ExitStatus::success);
}

TEST(BringUpClaimsTest, AnErrorThatTheLibraryLogsHasTheSame) {
    TemporaryFile const document("<switches><switch id='0' switchModel='88e6096'>"
                                 "<port id='0' connectedTo='cpu' portStatus='forwarding'/>"
                                 "<port id='1' connectedTo='nobody' portStatus='forwarding'/>"
                                 "</switch></switches>");
    auto const nothing = [](SimulatedBoard&) {};
    CommandRun const run = disturbed({document.path(), "--simulate"}, nothing);
    EXPECT_THAT(run.out,
                HasSubstr("  error    ManagedSwitchPort::ManagedSwitchPort: Unknown port type nobody"));
    EXPECT_EQ(run.status, ExitStatus::errorsFound);
    EXPECT_THAT(run.errors, HasSubstr("the library logged errors"));
    EXPECT_EQ(disturbed({document.path(), "--simulate", "--accept-errors"}, nothing).status,
              ExitStatus::success);
}

TEST(BringUpClaimsTest, ListsMisuseByRegisterAndAccess) {
    std::string const mixed = EXAMPLES_FOLDER "/trap-mixed.xml";
    CommandRun const run = program({mixed, "--simulate", "--misuse"});
    EXPECT_THAT(run.out, ContainsRegex("driver misuse seen by the models: 23\n"
                                       "  switch 3  analyser/register 0xa1  access [0-9]+: unknown register: "
                                       "write of 0x0000\n"
                                       "  switch 3  analyser/register 0xa2  access [0-9]+: "));
    std::size_t lines = 0;
    for (std::size_t at = run.out.find("  access "); at != std::string::npos;
         at = run.out.find("  access ", at + 1)) {
        ++lines;
    }
    EXPECT_EQ(lines, 23U);
    EXPECT_THAT(program({mixed, "--simulate"}).out, Not(HasSubstr("  access ")));
    EXPECT_EQ(program({mixed, "--misuse"}).status, ExitStatus::usage) << "hardware tells nobody";
}

TEST(BringUpClaimsTest, ReadsBackWhatItDid) {
    CommandRun const run = program({minimal, "--simulate", "--accept-errors"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, EndsWith("\nread back: 1 switch, 230 registers, 2 table entries, 0 deviations\n"));
    CommandRun const without = program({minimal, "--simulate", "--no-verify", "--accept-errors"});
    EXPECT_EQ(without.status, ExitStatus::success);
    EXPECT_THAT(without.out, EndsWith("\nread back: no\n"));
    EXPECT_THAT(program({minimal, "--no-hardware-access"}).out,
                EndsWith("\nread back: no, no chip was accessed\n"));
}

TEST(BringUpClaimsTest, ARegisterThatDoesNotKeepWhatIsWrittenIsADeviation) {
    auto const stick = [](SimulatedBoard& board) { board.getMarvell(0).stick("port 8", 0x04, 0, 0x0003); };
    CommandRun const run = disturbed({minimal, "--simulate"}, stick);
    EXPECT_EQ(run.status, ExitStatus::notAsDetermined);
    EXPECT_THAT(run.out, EndsWith("\nread back: 1 switch, 230 registers, 2 table entries, 1 deviation\n"
                                  "  switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0\n"));
    EXPECT_THAT(run.errors, HasSubstr("does not show what start-up determines"));
    EXPECT_EQ(disturbed({minimal, "--simulate", "--no-verify"}, stick).status, ExitStatus::success);
}

TEST(BringUpClaimsTest, AnEntryOfATableThatIsNotThereIsADeviation) {
    // No operation of the VTU is one any more.
    CommandRun const run = disturbed({minimal, "--simulate"}, [](SimulatedBoard& board) {
        board.getMarvell(0).stick("global 1", 0x05, 0, 0x7000);
    });
    EXPECT_EQ(run.status, ExitStatus::notAsDetermined);
    EXPECT_THAT(run.out, HasSubstr("  switch 0  VTU  VID 5 (0x5)  expected the entry, found none\n"));
}

TEST(BringUpClaimsTest, ChipsThatAreGoneAfterwardsAreNotReadBack) {
    constexpr std::uint64_t ofStartUp = 3173;
    CommandRun const run = disturbed({minimal, "--simulate"}, [](SimulatedBoard& board) {
        board.getFaults().strikeFrom(ofStartUp + 1, simulation::BusFaults::Kind::allOnes);
    });
    EXPECT_EQ(run.status, ExitStatus::registerFailed);
    EXPECT_THAT(run.out, HasSubstr("\nread back: 0 of 1 switch, 0 registers, 0 table entries, not everything "
                                   "was read\n  not read: switch 0: "));
}

TEST(BringUpClaimsTest, ADeadBoardIsToldOnceForEachSwitch) {
    for (auto const kind : {simulation::BusFaults::Kind::allZeros, simulation::BusFaults::Kind::allOnes}) {
        CommandRun const run =
            disturbed({EXAMPLES_FOLDER "/trap-three-switches.xml", "--simulate"},
                      [&](SimulatedBoard& board) { board.getFaults().strikeFrom(1, kind); });
        EXPECT_EQ(run.status, ExitStatus::switchMissing);
        EXPECT_THAT(run.out, HasSubstr("switches: 0 of 3 found\n"));
        EXPECT_THAT(run.out, Not(HasSubstr("read back")));
        std::size_t lines = 0;
        std::istringstream text(run.out);
        for (std::string line; std::getline(text, line);) {
            lines += line.find("unknown switch") != std::string::npos ? 1 : 0;
        }
        EXPECT_LE(lines, 6U) << run.out;
    }
}

} // namespace
