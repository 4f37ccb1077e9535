// Colours, in a terminal and elsewhere.

#include "switchctl/terminal/Colours.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "TerminalWindow.hpp"
#include "switchctl/terminal/Terminal.hpp"
#include "tests/support/TemporaryFile.hpp"

using switchctl::Colours;
using switchctl::Terminal;

namespace {

class ColoursTest : public testing::Test {
protected:
    ColoursTest() {
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
    }

    std::string paint() const {
        return switchctl::Colours(_window.getDevice()).paint(switchctl::Colours::Colour::red, "text");
    }

    TerminalWindow _window;
};

} // namespace

TEST_F(ColoursTest, ATerminalHasThem) {
    EXPECT_EQ(paint(), "\033[31mtext\033[0m");
}

TEST_F(ColoursTest, NotWhereNoneAreWanted) {
    setenv("NO_COLOR", "1", 1);
    EXPECT_EQ(paint(), "text");
    setenv("NO_COLOR", "", 1);
    EXPECT_EQ(paint(), "\033[31mtext\033[0m");
}

TEST_F(ColoursTest, NotOnADumbTerminal) {
    setenv("TERM", "dumb", 1);
    EXPECT_EQ(paint(), "text");
}

TEST_F(ColoursTest, NotInPipesFilesAndStreamsOfTheProgram) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(switchctl::Colours(ends[1]).paint(switchctl::Colours::Colour::bold, "text"), "text");
    close(ends[0]);
    close(ends[1]);
    test_support::TemporaryFile const file;
    int const descriptor = open(file.path().c_str(), O_WRONLY);
    EXPECT_EQ(switchctl::Colours(descriptor).paint(switchctl::Colours::Colour::green, "text"), "text");
    close(descriptor);
    std::ostringstream stream;
    EXPECT_EQ(switchctl::Colours(stream).paint(switchctl::Colours::Colour::yellow, "text"), "text");
}

TEST_F(ColoursTest, StandardStreamsAreKnownByTheirDescriptors) {
    std::ostringstream other;
    EXPECT_EQ(switchctl::Terminal::descriptorOf(std::cout), STDOUT_FILENO);
    EXPECT_EQ(switchctl::Terminal::descriptorOf(std::cerr), STDERR_FILENO);
    EXPECT_EQ(switchctl::Terminal::descriptorOf(other), -1);
}

TEST_F(ColoursTest, TheTerminalsSizeIsKnown) {
    EXPECT_EQ(switchctl::Terminal::getSize(_window.getDevice()).rows, 24U);
    EXPECT_EQ(switchctl::Terminal::getSize(_window.getDevice()).columns, 80U);
    EXPECT_EQ(switchctl::Terminal::getSize(-1).rows, 24U);
}
