// `switchctl statistics --watch` in a terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "TerminalRun.hpp"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char const* minimalBoard = EXAMPLES_FOLDER "/trap-minimal.xml";

/// A watch whose counter wraps in its first round.
std::vector<std::string> watch(std::vector<std::string> const& more = {}) {
    std::vector<std::string> arguments = {
        "statistics", minimalBoard, "0.8", "0.9", "--simulate", "--seed", "0.8/inUnicast=4294967290+10",
        "--watch",    "0.1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

} // namespace

TEST(WatchTerminalTest, DrawsInPlace) {
    TerminalRun run(watch({"--count", "2"}));
    EXPECT_EQ(run.wait(), 0);
    std::string const text = run.getText();
    EXPECT_THAT(text, HasSubstr("\033[2J\033[H"));
    EXPECT_THAT(text, HasSubstr("\033[H\033[1mround 1, rates over "));
    EXPECT_THAT(text, HasSubstr("\033[H\033[1mround 2, rates over "));
    EXPECT_THAT(text, HasSubstr("port 0.8 (88e6096)"));
    // Ten more than 4294967290 is 4 in 32 bits.
    EXPECT_THAT(text, HasSubstr(" frames/s  4\033[K"));
    EXPECT_THAT(text, HasSubstr(" frames/s  14\033[K"));
    EXPECT_THAT(text, HasSubstr("nothing counted: 0.9"));
}

TEST(WatchTerminalTest, OnADumbTerminalRoundsFollowEachOther) {
    TerminalRun run(watch({"--count", "2"}), {{"TERM", "dumb"}});
    EXPECT_EQ(run.wait(), 0);
    EXPECT_THAT(run.getText(), HasSubstr("nothing counted: 0.9\r\n\r\nround 2, rates over "));
    EXPECT_THAT(run.getText(), Not(HasSubstr("\033")));
}

TEST(WatchTerminalTest, ControlCEndsIt) {
    TerminalRun run(watch());
    run.getWindow().readUntil("round 1,");
    run.getWindow().type("\003");
    EXPECT_EQ(run.wait(), 0) << run.getText();
}

TEST(WatchTerminalTest, SignalsEndIt) {
    for (int const number : {SIGINT, SIGTERM}) {
        TerminalRun run(watch());
        run.getWindow().readUntil("round 2,");
        run.signal(number);
        EXPECT_EQ(run.wait(), 0) << run.getText();
    }
}
