#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::minimal;
using test_support::TemporaryFile;
using testing::HasSubstr;

namespace {

ChildProcess bringUp(std::string const& document) {
    return ChildProcess::runSwitchctl({"bring-up", document, "--simulate"});
}

TEST(ProgramRefusalTest, MalformedXmlIsRefusedWithFileLineAndReason) {
    TemporaryFile const document("<switches>\n  <switch id='0'>\n</switches>\n");
    ChildProcess const child = bringUp(document.path());
    EXPECT_EQ(child.status, 3);
    EXPECT_EQ(child.out, "");
    EXPECT_EQ(child.errors, "switchctl: " + document.path() +
                                ":3: Opening and ending tag mismatch: switch line 2 and switches\n");
}

TEST(ProgramRefusalTest, UnreadableXmlIsRefusedWithFileAndReason) {
    ChildProcess const missing = bringUp("/nonexistent/board.xml");
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(missing.errors, "switchctl: /nonexistent/board.xml:0: No such file or directory\n");
    ChildProcess const folder = bringUp("/tmp");
    EXPECT_EQ(folder.status, 3);
    EXPECT_EQ(folder.errors, "switchctl: /tmp:0: Is a directory\n");
}

TEST(ProgramRefusalTest, EntitiesAreRefused) {
    TemporaryFile const document("<!DOCTYPE b [\n<!ENTITY e 'x'>]><b>&e;</b>");
    ChildProcess const child = bringUp(document.path());
    EXPECT_EQ(child.status, 3);
    EXPECT_EQ(child.errors, "switchctl: " + document.path() + ":2: entity \"e\": entities are not allowed\n");
}

TEST(ProgramRefusalTest, ATraceThatCannotBeWrittenIsRefusedBeforeStartUp) {
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", minimal, "--simulate", "--trace", "/nonexistent/trace"});
    EXPECT_EQ(child.status, 7);
    EXPECT_EQ(child.out, "");
    EXPECT_EQ(child.errors, "switchctl: /nonexistent/trace: No such file or directory\n");
}

TEST(ProgramRefusalTest, ATraceThatDoesNotFitIsReported) {
    ChildProcess const child = ChildProcess::runSwitchctl(
        {"bring-up", minimal, "--simulate", "--accept-errors", "--trace", "/dev/full"});
    EXPECT_EQ(child.status, 7);
    EXPECT_EQ(child.errors, "switchctl: /dev/full: could not be written completely\n");
}

TEST(ProgramRefusalTest, WrongCommandLinesAreRefused) {
    std::vector<std::vector<std::string>> const commandLines = {
        {},
        {"bring-down"},
        {"bring-up"},
        {"bring-up", minimal, "--unknown"},
        {"bring-up", minimal, "another.xml", "--simulate"},
        {"bring-up", minimal, "--simulate", "--trace"},
        {"bring-up", minimal, "--simulate", "--log-level", "5"},
        {"bring-up", minimal, "--simulate", "--log-level", "-1"},
        {"bring-up", minimal, "--simulate", "--log-level", "high"},
        {"bring-up", minimal, "--simulate", "--statistics"},
        {"bring-up", minimal, "--simulate", "--statistics", "0"},
        {"bring-up", minimal, "--simulate", "--statistics", "0.1", "0.8"},
    };
    for (auto const& arguments : commandLines) {
        ChildProcess const child = ChildProcess::runSwitchctl(arguments);
        EXPECT_EQ(child.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(child.out, "") << testing::PrintToString(arguments);
        EXPECT_NE(child.errors, "") << testing::PrintToString(arguments);
    }
}

TEST(ProgramRefusalTest, SaysWhatIsWrongWithAPortAddress) {
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", minimal, "--simulate", "--statistics", "0:1"});
    EXPECT_EQ(child.status, 2);
    EXPECT_THAT(child.errors, HasSubstr("\"0:1\" is not of the form SWITCH.PORT"));
}

TEST(ProgramRefusalTest, HelpListsOptionsAndExitStatuses) {
    for (auto const& arguments : std::vector<std::vector<std::string>>{{"--help"}, {"bring-up", "--help"}}) {
        ChildProcess const child = ChildProcess::runSwitchctl(arguments);
        EXPECT_EQ(child.status, 0);
        EXPECT_THAT(child.out, HasSubstr("Exit status:\n  0  every switch of the document came up\n"));
        EXPECT_EQ(child.errors, "");
    }
    ChildProcess const child = ChildProcess::runSwitchctl({"bring-up", "--help"});
    for (char const* const option : {"BOARD.xml", "--simulate", "--no-hardware-access", "--trace FILE",
                                     "--log-level N", "--statistics SWITCH.PORT"}) {
        EXPECT_THAT(child.out, HasSubstr(option));
    }
}

} // namespace
