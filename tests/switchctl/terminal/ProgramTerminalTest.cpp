// What the program shows in a terminal, and what not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TerminalRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char const* minimal = EXAMPLES_FOLDER "/trap-minimal.xml";
constexpr char const* mixed = EXAMPLES_FOLDER "/trap-mixed.xml";

constexpr char const* red = "\033[31m";
constexpr char const* plain = "\033[0m";

} // namespace

TEST(ProgramTerminalTest, CheckPaintsSeverities) {
    TerminalRun run({"check", minimal});
    EXPECT_EQ(run.wait(), 3);
    EXPECT_THAT(run.getText(),
                HasSubstr(std::string(minimal) + ":12: \033[33mwarning\033[0m: <switch id=\"0\""));
}

TEST(ProgramTerminalTest, CheckPaintsErrorsInAnotherColour) {
    TemporaryFile const board("<board><switches><switch id='0' switchModel='88e6096'/>"
                              "<switch id='0' switchModel='88e6096'/></switches></board>");
    TerminalRun run({"check", board.path()});
    EXPECT_EQ(run.wait(), 3);
    EXPECT_THAT(run.getText(), HasSubstr(std::string(red) + "error" + plain + ": "));
}

TEST(ProgramTerminalTest, AuditPaintsDeviations) {
    TerminalRun run({"audit", minimal, "--simulate", "--deviate", "0/port8/PortControl:PortState=0"});
    EXPECT_EQ(run.wait(), 1);
    EXPECT_THAT(run.getText(), HasSubstr(std::string(red) +
                                         "switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0" +
                                         plain + "\r\n"));
}

TEST(ProgramTerminalTest, PlanPaintsDifferences) {
    TerminalRun run({"plan", minimal, mixed});
    EXPECT_EQ(run.wait(), 1);
    EXPECT_THAT(run.getText(), HasSubstr("\033[31m  - "));
    EXPECT_THAT(run.getText(), HasSubstr("\033[32m  + "));
}

TEST(ProgramTerminalTest, NoColoursWhereNoneAreWanted) {
    for (std::map<std::string, std::string> const& environment :
         {std::map<std::string, std::string>{{"NO_COLOR", "1"}}, {{"TERM", "dumb"}}}) {
        TerminalRun run({"check", minimal}, environment);
        EXPECT_EQ(run.wait(), 3);
        EXPECT_THAT(run.getText(), HasSubstr(":12: warning: "));
        EXPECT_THAT(run.getText(), Not(HasSubstr("\033")));
    }
}

TEST(ProgramTerminalTest, JsonHasNoColours) {
    TerminalRun run({"check", minimal, "--json"});
    EXPECT_EQ(run.wait(), 3);
    EXPECT_THAT(run.getText(), Not(HasSubstr("\033[3")));
}
