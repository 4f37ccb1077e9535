// The line that says what takes so long.

#include "switchctl/terminal/Progress.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "TerminalWindow.hpp"

using std::chrono::hours;
using std::chrono::milliseconds;
using switchctl::Progress;
using testing::EndsWith;
using testing::StartsWith;

namespace {

class ProgressTest : public testing::Test {
protected:
    ProgressTest() { setenv("TERM", "xterm", 1); }

    TerminalWindow _window;
};

} // namespace

TEST_F(ProgressTest, IsALineThatIsErasedAtTheEnd) {
    {
        switchctl::Progress const progress(_window.getDevice(), "reading switch 0", milliseconds(0));
        EXPECT_THAT(_window.readUntil(" s\r"), StartsWith("\r\033[Kreading switch 0 ... 0 s\r"));
    }
    EXPECT_THAT(_window.readAvailable(), EndsWith(" s\r\r\033[K"));
}

TEST_F(ProgressTest, SaysHowMuchIsDone) {
    switchctl::Progress progress(_window.getDevice(), "reading", milliseconds(0));
    progress.update(3, 57);
    _window.readUntil("\r\033[Kreading ... 3 of 57, ");
    progress.update(4, 57);
    EXPECT_THAT(_window.readUntil("4 of 57"), testing::HasSubstr("\r\033[Kreading ... 4 of 57, "));
}

TEST_F(ProgressTest, StaysOnOneLine) {
    switchctl::Progress const progress(_window.getDevice(), std::string(200, 'x'), milliseconds(0));
    std::string const text = _window.readUntil("\r\033[K" + std::string(79, 'x') + "\r");
    EXPECT_THAT(text, StartsWith("\r\033[K" + std::string(79, 'x') + "\r"));
}

TEST_F(ProgressTest, NothingIsSaidOfWhatIsDoneSooner) {
    { switchctl::Progress const progress(_window.getDevice(), "reading", hours(1)); }
    EXPECT_EQ(_window.readAvailable(), "");
}

TEST_F(ProgressTest, NothingIsSaidOnADumbTerminal) {
    setenv("TERM", "dumb", 1);
    { switchctl::Progress const progress(_window.getDevice(), "reading", milliseconds(0)); }
    EXPECT_EQ(_window.readAvailable(), "");
}

TEST_F(ProgressTest, NothingGoesIntoAPipe) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    {
        switchctl::Progress progress(ends[1], "reading", milliseconds(0));
        progress.update(1, 2);
    }
    close(ends[1]);
    char character = 0;
    EXPECT_EQ(read(ends[0], &character, 1), 0);
    close(ends[0]);
}

TEST_F(ProgressTest, NothingGoesIntoAStreamThatIsNotStandardError) {
    std::ostringstream errors;
    { switchctl::Progress const progress(errors, "reading"); }
    EXPECT_EQ(errors.str(), "");
}
