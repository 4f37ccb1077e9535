// `switchctl replay` as it is typed.

#include "switchctl/replay/ReplayCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/board/trace/TracedSession.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using simulation::SimulatedBoard;
using switchctl::replay::ReplayCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

CommandRun replay(std::string const& path) {
    return CommandRun::of<switchctl::replay::ReplayCommand>({"replay", path});
}

/// Number of the first line with that text, from 1.
unsigned lineOf(std::string const& text, std::string const& part) {
    std::size_t const place = text.find(part);
    EXPECT_NE(place, std::string::npos) << part;
    return 1 + static_cast<unsigned>(std::count(text.begin(), text.begin() + static_cast<long>(place), '\n'));
}

class ReplayOfExampleTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST_P(ReplayOfExampleTest, TheModelsDoTheSame) {
    TracedSession const session(TracedSession::exampleText(GetParam()));
    TemporaryFile const trace(session.getText());
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::success) << run.out << run.errors;
    EXPECT_EQ(run.out, trace.path() + ": the models do the same in all " +
                           std::to_string(session.getAccesses().size()) + " accesses\n");
}

INSTANTIATE_TEST_SUITE_P(Examples, ReplayOfExampleTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));

TEST(ReplayCommandTest, TheFirstDivergenceIsReported) {
    std::string text = TracedSession(TracedSession::exampleText("trap-minimal")).getText();
    std::string const part = "smi R 0x10/0x03 port0/SwitchIdentifier 0x098";
    std::size_t const place = text.find(part) + part.size() - 1;
    unsigned const line = lineOf(text, part);
    // A product number that the chip does not have, and another divergence after it.
    text[place] = '7';
    std::string const second = "ok\n";
    text.replace(text.rfind(second), second.size(), "failed\n");
    TemporaryFile const trace(text);
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::traceDiverges);
    EXPECT_THAT(run.out, StartsWith(trace.path() + ":" + std::to_string(line) +
                                    ": switch 0, read of port 0/SwitchIdentifier (0x10/0x03): expected "
                                    "0x097"));
    EXPECT_THAT(run.out, HasSubstr("    Product  expected 0x97, found 0x98\n"));
}

TEST(ReplayCommandTest, AnAccessThatFailedOnTheBoardDiverges) {
    TracedSession const session(TracedSession::exampleText("trap-minimal"),
                                [](SimulatedBoard& board) { board.getMarvell(0).unplug(); });
    TemporaryFile const trace(session.getText());
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::traceDiverges);
    EXPECT_THAT(run.out, HasSubstr(trace.path() + ":3: switch 0, read of SMICommand: expected a failed read, "
                                                  "found "));
}

TEST(ReplayCommandTest, AChipThatDidDifferentlyDiverges) {
    // A port status bit that is stuck on the board, where a model has it free.
    TracedSession const session(TracedSession::exampleText("trap-minimal"), [](SimulatedBoard& board) {
        board.getMarvell(0).stick("port 8", 0x01, 0x80, 0);
    });
    TemporaryFile const trace(session.getText());
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::traceDiverges);
    EXPECT_THAT(run.out, HasSubstr("read of port 8/PhysicalControl (0x18/0x01): expected "));
    EXPECT_THAT(run.out, HasSubstr("    FCValue  expected 0x1, found 0x0\n"));
}

TEST(ReplayCommandTest, WaitsOfTheTraceAreKept) {
    // A clear of the VLAN table that shows busy at first, and done after a wait of a second.
    TemporaryFile const trace("switchctl trace 1\nchip 3 vsc7390\n"
                              "0.000001000 3 parallel W 2.0/0xd0 analyser/VLANACCESS 0x00000003 ok\n"
                              "1.000000000 3 parallel R 2.0/0xd0 analyser/VLANACCESS 0x00000000 ok\n");
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::success) << run.out;
    TemporaryFile const early("switchctl trace 1\nchip 3 vsc7390\n"
                              "0.000001000 3 parallel W 2.0/0xd0 analyser/VLANACCESS 0x00000003 ok\n"
                              "0.000002000 3 parallel R 2.0/0xd0 analyser/VLANACCESS 0x00000003 ok\n");
    EXPECT_EQ(replay(early.path()).status, chips::ExitStatus::success) << replay(early.path()).out;
}

TEST(ReplayCommandTest, WhatIsNoTraceIsRefused) {
    TemporaryFile const trace("switchctl trace 1\nnonsense\n");
    CommandRun const run = replay(trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::badDocument);
    EXPECT_EQ(run.errors, "switchctl: " + trace.path() + ":2: an access has 8 words, not 1\n");
    EXPECT_EQ(replay("/nonexistent").status, chips::ExitStatus::badDocument);
    EXPECT_EQ(replay("/nonexistent").errors, "switchctl: /nonexistent: No such file or directory\n");
    EXPECT_EQ(replay("/tmp").status, chips::ExitStatus::badDocument);
}

TEST(ReplayCommandTest, HelpHasExamplesAndExitStatuses) {
    std::string const help = replay("--help").out;
    EXPECT_THAT(help, HasSubstr("switchctl replay board.txt"));
    EXPECT_THAT(help, HasSubstr("Exit status:"));
}
