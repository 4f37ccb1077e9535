// `switchctl register ... --trace`, over each transport.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "switchctl/register/RegisterCommand.hpp"
#include "switchctl/replay/ReplayCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::registers::RegisterCommand;
using switchctl::replay::ReplayCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::HasSubstr;

namespace {

CommandRun runRegister(std::vector<std::string> arguments, std::string const& trace) {
    arguments.insert(arguments.begin(), "register");
    arguments.insert(arguments.end(), {"--trace", trace});
    return CommandRun::of<switchctl::registers::RegisterCommand>(arguments, std::string("/nonexistent/mem"));
}

struct Case {
    std::vector<std::string> arguments;
    char const* trace;
};

class RegisterTraceTest : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(RegisterTraceTest, HasTheAccessesAndCanBeReplayed) {
    TemporaryFile const trace;
    CommandRun const run = runRegister(GetParam().arguments, trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::success) << run.errors;
    EXPECT_THAT(trace.content(), ContainsRegex(GetParam().trace));
    CommandRun const replay = CommandRun::of<switchctl::replay::ReplayCommand>({"replay", trace.path()});
    EXPECT_EQ(replay.status, chips::ExitStatus::success) << replay.out << replay.errors;
}

INSTANTIATE_TEST_SUITE_P(
    Transports, RegisterTraceTest,
    testing::Values(Case{{"read", "smi", "--switch", "4", "--simulate", "port0/SwitchIdentifier"},
                         "^switchctl trace 1\nchip 4 88e6096\n"
                         "[0-9]+[.][0-9]{9} 4 smi R 0x10/0x03 port0/SwitchIdentifier 0x098[0-9a-f] ok\n$"},
                    Case{{"write", "parallel", "--simulate", "--yes", "analyser/VLANMASK:Ports=5"},
                         "^switchctl trace 1\nchip 0 vsc7390\n"
                         "[0-9.]+ 0 parallel R 2.0/0x05 analyser/VLANMASK 0x00000000 ok\n"
                         "[0-9.]+ 0 parallel W 2.0/0x05 analyser/VLANMASK 0x00000005 ok\n$"},
                    Case{{"read", "serial", "--simulate", "system/CHIPID"},
                         "\n[0-9.]+ 0 serial R 7.0/0x18 system/CHIPID 0x[0-9a-f]{8} ok\n$"},
                    Case{{"read", "phy", "--switch", "1", "--simulate", "3/Identifier1"},
                         "\n[0-9.]+ 1 smi R phy3/0x02 phy3/Identifier1 0x0141 ok\n$"}));

TEST(RegisterTraceTest, HasAnAccessThatFailed) {
    TemporaryFile const trace;
    CommandRun const run = runRegister({"read", "phy", "--parallel", "--simulate", "31/0x02"}, trace.path());
    EXPECT_EQ(run.status, chips::ExitStatus::registerFailed);
    EXPECT_THAT(trace.content(), ContainsRegex(" 0 parallel R phy31/0x02 - - failed\n$"));
}

TEST(RegisterTraceTest, AFileThatCannotBeWrittenIsRefused) {
    CommandRun const run =
        runRegister({"read", "smi", "--switch", "0", "--simulate", "port0/PortStatus"}, "/nonexistent/t");
    EXPECT_EQ(run.status, chips::ExitStatus::noTrace);
    EXPECT_THAT(run.errors, HasSubstr("/nonexistent/t: No such file or directory"));
    EXPECT_EQ(
        runRegister({"read", "smi", "--switch", "0", "--simulate", "port0/PortStatus"}, "/dev/full").status,
        chips::ExitStatus::noTrace);
}

TEST(RegisterTraceTest, TheExamplesOfTheFormatsDescriptionAreTraces) {
    std::ifstream const file(EXAMPLES_FOLDER "/../docs/trace-format.md");
    std::ostringstream content;
    content << file.rdbuf();
    std::string const text = content.str();
    unsigned examples = 0;
    for (std::size_t start = text.find("```trace\n"); start != std::string::npos;
         start = text.find("```trace\n", start + 1)) {
        std::size_t const begin = text.find('\n', start) + 1;
        TemporaryFile const trace(text.substr(begin, text.find("```", begin) - begin));
        CommandRun const run = CommandRun::of<switchctl::replay::ReplayCommand>({"replay", trace.path()});
        EXPECT_NE(run.status, chips::ExitStatus::badDocument) << run.errors;
        ++examples;
    }
    EXPECT_GE(examples, 2U);
}
