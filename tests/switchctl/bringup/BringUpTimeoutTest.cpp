// Start-ups that would wait for ever.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "switchctl/bringup/BringUpCommand.hpp"
#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using simulation::BusFaults;
using simulation::SimulatedBoard;
using switchctl::bringup::BringUpCommand;
using switchctl::bringup::DocumentChecks;
using switchctl::bringup::FindingCounts;
using test_support::CommandRun;
using testing::HasSubstr;
using testing::Not;

namespace {

using Disturb = std::function<void(SimulatedBoard&)>;

CommandRun bringUp(std::vector<std::string> words, Disturb const& disturb,
                   std::string const& document = EXAMPLES_FOLDER "/trap-video-switch.xml") {
    words.insert(words.begin(), {"bring-up", document, "--simulate"});
    DocumentChecks const none = [](reference_host::XmlDocument&) { return FindingCounts(); };
    return CommandRun::of<BringUpCommand>(words, std::string("/nonexistent/mem"), none, disturb);
}

TEST(BringUpTimeoutTest, AnArbiterThatNeverEmptiesEndsTheCommand) {
    CommandRun const run = bringUp({}, [](SimulatedBoard& board) {
        board.getFaults().slowDown(100'000); // fewer looks
        board.getVitesse(board.getSwitchIds().front())
            .hang(simulation::ChipTestSide::CommandUnit::arbiter, 1);
    });
    EXPECT_EQ(run.status, ExitStatus::noProgress);
    EXPECT_THAT(run.errors, HasSubstr("start-up made no progress for 10 s, waiting for switch "));
    EXPECT_THAT(run.errors, HasSubstr("(vsc7390), arbiter/ARBEMPTY\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("read back")));
}

TEST(BringUpTimeoutTest, SoDoesABusThatAnswersZerosFromSomeMomentOn) {
    // The library has enough of a read without an answer after ten seconds, and says nothing about which.
    for (std::uint64_t const moment : {2'000U, 9'000U, 12'000U, 15'000U, 20'000U, 25'000U}) {
        CommandRun const run = bringUp({"--timeout", "5"}, [&](SimulatedBoard& board) {
            // Each look takes longer, so that there are fewer.
            board.getFaults().callBefore(moment, [&] { board.getFaults().slowDown(1'000'000); });
            board.getFaults().strikeFrom(moment, BusFaults::Kind::allZeros);
        });
        EXPECT_EQ(run.status, ExitStatus::noProgress) << moment << run.out << run.errors;
        EXPECT_THAT(run.errors,
                    HasSubstr("start-up made no progress for 5 s, waiting for switch 2 (vsc7390), "))
            << moment;
    }
}

TEST(BringUpTimeoutTest, SoDoesAnMdioBusOnWhichNothingEndsAnyMore) {
    std::string const minimal = EXAMPLES_FOLDER "/trap-minimal.xml";
    CommandRun const chip = bringUp(
        {},
        [](SimulatedBoard& board) {
            board.getFaults().slowDown(100'000);
            board.getMarvell(0).hang(simulation::ChipTestSide::CommandUnit::smi, 50);
        },
        minimal);
    EXPECT_EQ(chip.status, ExitStatus::noProgress);
    EXPECT_THAT(chip.errors, HasSubstr("waiting for switch 0 (88e6096), "));
    CommandRun const master = bringUp(
        {},
        [](SimulatedBoard& board) {
            board.getFaults().slowDown(100'000);
            board.getFaults().callBefore(1'000, [&board] { board.getMac().hang(); });
        },
        minimal);
    EXPECT_EQ(master.status, ExitStatus::noProgress);
    EXPECT_THAT(master.errors, HasSubstr("waiting for the bus itself, at 0x800100"));
}

TEST(BringUpTimeoutTest, TheTimeIsAnOption) {
    auto const hang = [](SimulatedBoard& board) {
        auto& chip = board.getVitesse(board.getSwitchIds().front());
        board.getFaults().slowDown(100'000);
        chip.hang(simulation::ChipTestSide::CommandUnit::arbiter, 1);
        board.getClock().callAt(20'000'000'000,
                                [&chip] { chip.release(simulation::ChipTestSide::CommandUnit::arbiter); });
    };
    EXPECT_EQ(bringUp({}, hang).status, ExitStatus::noProgress);
    CommandRun const patient = bringUp({"--timeout", "30"}, hang);
    EXPECT_EQ(patient.status, ExitStatus::success) << patient.out << patient.errors;
    for (char const* const wrong : {"0", "-1", "x", "100000"}) {
        EXPECT_EQ(bringUp({"--timeout", wrong}, hang).status, ExitStatus::usage) << wrong;
    }
}

} // namespace
