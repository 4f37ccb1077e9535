#include <dlfcn.h>
#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <thread>

#include "simulation/VirtualClock.hpp"

using simulation::VirtualClock;

namespace {

class ClockTest : public testing::Test {
protected:
    ~ClockTest() override { VirtualClock::adopt(nullptr); }

    static timespec monotonic() {
        timespec now{};
        EXPECT_EQ(clock_gettime(CLOCK_MONOTONIC, &now), 0);
        return now;
    }
};

/// What the C library itself says.
time_t realSeconds() {
    timespec now{};
    EXPECT_EQ(clock_gettime(CLOCK_REALTIME, &now), 0);
    return now.tv_sec;
}

TEST_F(ClockTest, NobodyHasOneAtFirst) {
    EXPECT_EQ(VirtualClock::adopted(), nullptr);
}

TEST_F(ClockTest, AnAdoptedClockStandsStill) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    EXPECT_EQ(VirtualClock::adopted(), &clock);
    EXPECT_EQ(monotonic().tv_sec, 0);
    EXPECT_EQ(monotonic().tv_nsec, 0);
    EXPECT_EQ(time(nullptr), 946'684'800);
}

TEST_F(ClockTest, SleepingMovesIt) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    EXPECT_EQ(usleep(100), 0);
    EXPECT_EQ(clock.getNanoseconds(), 100'000U);
    EXPECT_EQ(usleep(3'600'000'000U), 0);
    EXPECT_EQ(monotonic().tv_sec, 3600);
    EXPECT_EQ(monotonic().tv_nsec, 100'000);
}

TEST_F(ClockTest, WallClockMovesInStep) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    clock.advanceNanoseconds(999'999'999);
    EXPECT_EQ(time(nullptr), 946'684'800);
    clock.advanceNanoseconds(1);
    time_t stored = 0;
    EXPECT_EQ(time(&stored), 946'684'801);
    EXPECT_EQ(stored, 946'684'801);
}

TEST_F(ClockTest, WhereTheSecondChangesCanBeChosen) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    clock.setWallClockPhase(999'000'000);
    EXPECT_EQ(time(nullptr), 946'684'800);
    clock.advanceNanoseconds(999'999);
    EXPECT_EQ(time(nullptr), 946'684'800);
    clock.advanceNanoseconds(1);
    EXPECT_EQ(time(nullptr), 946'684'801);
    EXPECT_EQ(clock.getNanoseconds(), 1'000'000U);
    EXPECT_EQ(monotonic().tv_sec, 0);
}

TEST_F(ClockTest, OtherThreadsKeepTheSystemsTime) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    VirtualClock* seen = &clock;
    time_t seconds = 0;
    std::thread([&] {
        seen = VirtualClock::adopted();
        seconds = time(nullptr);
        usleep(1);
    }).join();
    EXPECT_EQ(seen, nullptr);
    EXPECT_GE(seconds, 1'600'000'000);
    EXPECT_EQ(clock.getNanoseconds(), 0U);
}

TEST_F(ClockTest, ThreadsCanShareOne) {
    VirtualClock clock;
    auto const sleeper = [&clock] {
        VirtualClock::adopt(&clock);
        for (int i = 0; i < 1000; ++i) {
            usleep(1);
        }
    };
    std::thread first(sleeper);
    std::thread second(sleeper);
    first.join();
    second.join();
    EXPECT_EQ(clock.getNanoseconds(), 2'000'000U);
}

TEST_F(ClockTest, OtherClocksStayTheSystems) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    EXPECT_GE(realSeconds(), 1'600'000'000);
}

TEST_F(ClockTest, PuttingItDownBringsTheSystemsTimeBack) {
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    VirtualClock::adopt(nullptr);
    EXPECT_GE(time(nullptr), 1'600'000'000);
    time_t stored = 0;
    EXPECT_EQ(time(&stored), stored);
    timespec const before = monotonic();
    EXPECT_EQ(usleep(2'000), 0);
    timespec const after = monotonic();
    EXPECT_NE(before.tv_sec * 1'000'000'000 + before.tv_nsec, after.tv_sec * 1'000'000'000 + after.tv_nsec);
    EXPECT_EQ(clock.getNanoseconds(), 0U);
}

TEST_F(ClockTest, ADestroyedClockIsPutDown) {
    {
        VirtualClock clock;
        VirtualClock::adopt(&clock);
    }
    EXPECT_EQ(VirtualClock::adopted(), nullptr);
    EXPECT_GE(time(nullptr), 1'600'000'000);
}

// Shared libraries ask the dynamic linker, so what it answers is what they call.
TEST_F(ClockTest, TheDynamicLinkerPrefersTheseDefinitions) {
    for (char const* name : {"clock_gettime", "time", "usleep"}) {
        void* const first = dlsym(RTLD_DEFAULT, name);
        Dl_info found{};
        Dl_info own{};
        ASSERT_NE(dladdr(first, &found), 0) << name;
        ASSERT_NE(dladdr(reinterpret_cast<void*>(&realSeconds), &own), 0);
        EXPECT_EQ(found.dli_fbase, own.dli_fbase) << name;
    }
}

} // namespace
