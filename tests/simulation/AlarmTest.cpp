#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "simulation/VirtualClock.hpp"

using simulation::VirtualClock;

namespace {

/// What a clock does by itself when it gets somewhere.
class AlarmTest : public testing::Test {
protected:
    ~AlarmTest() override { VirtualClock::adopt(nullptr); }

    void noteAt(std::uint64_t nanoseconds, char const* note) {
        clock.callAt(nanoseconds, [this, note] { notes += note; });
    }

    VirtualClock clock;
    std::string notes;
};

TEST_F(AlarmTest, GoesOffOnceWhenItsTimeIsReached) {
    noteAt(100, "a");
    clock.advanceNanoseconds(99);
    EXPECT_EQ(notes, "");
    clock.advanceNanoseconds(1);
    EXPECT_EQ(notes, "a");
    clock.advanceNanoseconds(1'000);
    EXPECT_EQ(notes, "a");
}

TEST_F(AlarmTest, GoesOffWhenItsTimeIsPassed) {
    noteAt(100, "a");
    clock.advanceNanoseconds(500);
    EXPECT_EQ(notes, "a");
}

TEST_F(AlarmTest, AlarmsGoOffInTheOrderOfTheirTimesAndOfTheirSetting) {
    noteAt(300, "c");
    noteAt(100, "a");
    noteAt(200, "b");
    noteAt(300, "d");
    clock.advanceNanoseconds(150);
    EXPECT_EQ(notes, "a");
    clock.advanceNanoseconds(850);
    EXPECT_EQ(notes, "abcd");
}

TEST_F(AlarmTest, WaitsForTheClockToMoveEvenWhenItIsDue) {
    clock.advanceNanoseconds(100);
    noteAt(50, "a");
    EXPECT_EQ(notes, "");
    clock.advanceNanoseconds(1);
    EXPECT_EQ(notes, "a");
}

TEST_F(AlarmTest, SleepingSetsItOff) {
    VirtualClock::adopt(&clock);
    noteAt(10'000, "a");
    usleep(9);
    EXPECT_EQ(notes, "");
    usleep(1);
    EXPECT_EQ(notes, "a");
}

TEST_F(AlarmTest, MaySetAnotherAndMoveTheClock) {
    clock.callAt(100, [this] {
        noteAt(250, "b");
        notes += "a";
        clock.advanceNanoseconds(100);
    });
    clock.advanceNanoseconds(100);
    EXPECT_EQ(notes, "a");
    EXPECT_EQ(clock.getNanoseconds(), 200U);
    clock.advanceNanoseconds(50);
    EXPECT_EQ(notes, "ab");
}

} // namespace
