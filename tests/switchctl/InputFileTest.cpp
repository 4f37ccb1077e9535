// What commands read: never more than a limit, also from the standard input.

#include "reference_host/InputFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using reference_host::InputFile;
using test_support::minimal;
using test_support::TemporaryFile;
using testing::HasSubstr;

namespace {

std::string refusalOf(std::string const& path) {
    try {
        InputFile::read(path);
    } catch (InputFile::Error const& error) {
        return error.what();
    }
    return "";
}

std::string traceOf(std::string const& board) {
    return ChildProcess::runSwitchctl({"bring-up", board, "--simulate", "--trace", "-"}).out;
}

std::string withCarriageReturns(std::string const& text) {
    return std::regex_replace(text, std::regex("\n"), "\r\n");
}

} // namespace

TEST(InputFileTest, AFileUpToTheLimitIsRead) {
    InputFile::setLimit(4);
    TemporaryFile const four("four");
    TemporaryFile const five("fives");
    EXPECT_EQ(InputFile::read(four.path()), "four");
    EXPECT_EQ(refusalOf(five.path()), "larger than the limit of 4 bytes");
    InputFile::setLimit(InputFile::usualLimit);
    EXPECT_EQ(InputFile::read(five.path()), "fives");
}

TEST(InputFileTest, AFileWithoutAnEndIsRefused) {
    EXPECT_EQ(refusalOf("/dev/zero"), "larger than the limit of 64 MiB");
}

TEST(InputFileTest, RefusalsHaveReasons) {
    EXPECT_EQ(refusalOf("/nonexistent/file"), "No such file or directory");
    EXPECT_EQ(refusalOf("/tmp"), "Is a directory");
}

TEST(InputFileTest, EveryVerbRefusesAnInputWithoutAnEnd) {
    for (auto const& arguments : std::vector<std::vector<std::string>>{
             {"check", "/dev/zero"},
             {"bring-up", "/dev/zero", "--simulate"},
             {"paths", "/dev/zero"},
             {"explain", "/dev/zero", "0.1", "to", "0.0"},
             {"plan", "/dev/zero"},
             {"plan", minimal, "/dev/zero"},
             {"draw", "/dev/zero", "--format", "dot"},
             {"audit", "/dev/zero", "--simulate"},
             {"audit", minimal, "--simulate=/dev/zero"},
             {"statistics", "/dev/zero", "--simulate"},
             {"simulate-controller", "/dev/zero"},
             {"replay", "/dev/zero"},
             {"register", "diff", "/dev/zero", "/dev/zero"},
             {"register", "read", "parallel", "--simulate=/dev/zero", "system/CHIPID"}}) {
        ChildProcess const child = ChildProcess::runSwitchctl(arguments);
        EXPECT_EQ(child.status, 3) << testing::PrintToString(arguments);
        EXPECT_THAT(child.errors, testing::ContainsRegex("^switchctl: /dev/zero:(0:)? larger than the limit "
                                                         "of 64 MiB\n$"));
    }
}

TEST(InputFileTest, TheLimitCanBeChanged) {
    TemporaryFile const large(InputFile::read(EXAMPLES_FOLDER "/home-gateway.xml") +
                              std::string(3U << 20U, ' '));
    EXPECT_EQ(ChildProcess::runSwitchctl({"check", large.path()}).status, 0);
    ChildProcess const child = ChildProcess::runSwitchctl({"--input-limit", "3", "check", large.path()});
    EXPECT_EQ(child.status, 3);
    EXPECT_EQ(child.errors, "switchctl: " + large.path() + ":0: larger than the limit of 3 MiB\n");
}

TEST(InputFileTest, ADashIsTheStandardInput) {
    for (auto const& arguments :
         std::vector<std::vector<std::string>>{{"draw", "", "--format", "dot", "-o", "-"},
                                               {"audit", "", "--simulate"},
                                               {"statistics", "", "--simulate", "--seed", "0.1/inUnicast=5"},
                                               {"bring-up", "", "--simulate", "--accept-errors"}}) {
        std::vector<std::string> named = arguments;
        std::vector<std::string> given = arguments;
        named[1] = minimal;
        given[1] = "-";
        ChildProcess const expected = ChildProcess::runSwitchctl(named);
        ChildProcess const child = ChildProcess::runSwitchctl(given, {minimal, ""});
        EXPECT_EQ(child.status, 0) << child.errors;
        std::string const text = std::regex_replace(expected.out, std::regex(minimal), "-");
        EXPECT_EQ(child.out, std::regex_replace(text, std::regex("<B>trap-minimal.xml"), "<B>-"));
    }
    TemporaryFile const trace(traceOf(minimal));
    EXPECT_THAT(ChildProcess::runSwitchctl({"replay", "-"}, {trace.path(), ""}).out,
                HasSubstr("-: the models do the same in all "));
    EXPECT_EQ(ChildProcess::runSwitchctl({"check", "-"}, {"closed", ""}).errors,
              "switchctl: -:0: Bad file descriptor\n");
}

TEST(InputFileTest, TracesAndDumpsMayHaveLineEndsOfTwoCharacters) {
    TemporaryFile const trace(withCarriageReturns(traceOf(minimal)));
    ChildProcess const replay = ChildProcess::runSwitchctl({"replay", trace.path()});
    EXPECT_EQ(replay.status, 0) << replay.errors << replay.out;
    ChildProcess const dump =
        ChildProcess::runSwitchctl({"register", "dump", "smi", "--switch", "0", "--simulate"});
    TemporaryFile const first(dump.out);
    TemporaryFile const second(withCarriageReturns(dump.out));
    ChildProcess const diff = ChildProcess::runSwitchctl({"register", "diff", first.path(), second.path()});
    EXPECT_EQ(diff.status, 0) << diff.errors << diff.out;
}
