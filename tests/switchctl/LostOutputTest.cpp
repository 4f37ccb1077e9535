// Results that nobody gets are no success, whatever the command.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::minimal;
using test_support::TemporaryFile;

namespace {

using Words = std::vector<std::string>;

constexpr int outputLost = 15;

/// Each verb in a way that prints something.
class LostOutputTest : public testing::Test {
private:
    static std::string dumpOf(std::string const& simulate) {
        return ChildProcess::runSwitchctl({"register", "dump", "smi", "--switch", "0", simulate}).out;
    }

    TemporaryFile const _fresh{dumpOf("--simulate")};
    TemporaryFile const _up{dumpOf("--simulate=" + minimal)};
    TemporaryFile const _trace{
        ChildProcess::runSwitchctl({"bring-up", minimal, "--simulate", "--accept-errors", "--trace", "-"})
            .out};

protected:
    std::vector<Words> const commandLines = {
        {"--help"},
        {"bring-up", "--help"},
        {"help", "bring-up"},
        {"--version"},
        {"completion", "bash"},
        {"bring-up", minimal, "--simulate", "--accept-errors"},
        {"register", "read", "parallel", "--simulate", "system/CHIPID"},
        {"register", "write", "parallel", "--simulate", "analyser/VLANMASK=5", "--yes"},
        {"register", "dump", "smi", "--switch", "0", "--simulate"},
        {"register", "diff", _fresh.path(), _up.path()},
        {"new", "--chip", "0=88e6096", "--cpu", "0.0", "--from-vlans", "2=0.0t,0.1"},
        {"check", minimal},
        {"check", "--list"},
        {"check", "--schema"},
        {"draw", minimal, "--format", "dot"},
        {"paths", minimal},
        {"explain", minimal, "0.1", "to", "0.0"},
        {"plan", minimal},
        {"audit", minimal, "--simulate"},
        {"status", minimal, "--simulate"},
        {"status", minimal, "--simulate", "--follow", "--interval", "0.1"},
        {"table", minimal, "vlans", "--simulate"},
        {"table", minimal, "addresses", "--simulate", "--flush", "--yes"},
        {"statistics", minimal, "--simulate"},
        {"statistics", minimal, "--simulate", "--format", "json"},
        {"statistics", minimal, "--simulate", "--format", "openmetrics"},
        {"statistics", minimal, "--simulate", "--watch", "0.1"},
        {"port", minimal, "0.1", "down", "--simulate"},
        {"doctor", minimal, "--simulate"},
        {"faults"},
        {"replay", _trace.path()},
        {"simulate-controller", "--fresh"},
    };
};

std::set<std::string> verbsOfTheHelp() {
    std::string const help = ChildProcess::runSwitchctl({"--help"}).out;
    std::set<std::string> verbs;
    std::regex const verb("\n  ([a-z-]+) ");
    std::size_t const start = help.find("Subcommands:");
    std::string const list = help.substr(start, help.find("\n\n", start) - start);
    for (std::sregex_iterator match(list.begin(), list.end(), verb); match != std::sregex_iterator();
         ++match) {
        verbs.insert((*match)[1]);
    }
    return verbs;
}

void expectLost(Words const& arguments, std::string const& stream) {
    ChildProcess const child = ChildProcess::runSwitchctl(arguments, {"/dev/null", stream});
    EXPECT_EQ(child.status, outputLost) << testing::PrintToString(arguments) << " to " << stream;
    EXPECT_THAT(child.errors,
                testing::EndsWith("switchctl: standard output: could not be written completely\n"));
}

} // namespace

TEST_F(LostOutputTest, EveryVerbIsTried) {
    std::set<std::string> verbs = verbsOfTheHelp();
    EXPECT_GE(verbs.size(), 9U);
    for (Words const& arguments : commandLines) {
        verbs.erase(arguments.front());
    }
    EXPECT_THAT(verbs, testing::IsEmpty());
}

TEST_F(LostOutputTest, AFullDeviceIsAnError) {
    for (Words const& arguments : commandLines) {
        expectLost(arguments, "/dev/full");
    }
}

TEST_F(LostOutputTest, AClosedStandardOutputIsAnError) {
    for (Words const& arguments : commandLines) {
        expectLost(arguments, "closed");
    }
}

TEST_F(LostOutputTest, WhoeverPrintsNothingLosesNothing) {
    TemporaryFile const picture;
    EXPECT_EQ(ChildProcess::runSwitchctl({"draw", minimal, "--format", "dot", "-o", picture.path()},
                                         {"/dev/null", "closed"})
                  .status,
              0);
}

// The first file that is opened would get the number of the standard output.
TEST_F(LostOutputTest, NoFileGetsTheOutputThatIsClosed) {
    TemporaryFile const trace;
    ChildProcess const child = ChildProcess::runSwitchctl(
        {"bring-up", minimal, "--simulate", "--accept-errors", "--trace", trace.path()},
        {"/dev/null", "closed"});
    EXPECT_EQ(child.status, outputLost);
    EXPECT_THAT(trace.content(), testing::StartsWith("switchctl trace 1\n"));
    EXPECT_THAT(trace.content(), testing::Not(testing::HasSubstr("switches:")));
}

TEST_F(LostOutputTest, TheHelpTellsTheStatus) {
    for (std::string const& verb : verbsOfTheHelp()) {
        EXPECT_THAT(ChildProcess::runSwitchctl({verb, "--help"}).out,
                    testing::HasSubstr("\n 15  standard output could not be written completely\n"))
            << verb;
    }
}
