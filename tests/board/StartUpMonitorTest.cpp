#include "board/StartUpMonitor.hpp"

#include <gtest/gtest.h>

#include <future>
#include <string>

namespace {

TEST(StartUpMonitorTest, EndsWhenTheSwitchesAreReady) {
    board::StartUpMonitor monitor;
    monitor.reportEnd(nullptr);
    board::StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_TRUE(outcome.populated);
    EXPECT_EQ(outcome.reason, "");
}

TEST(StartUpMonitorTest, EndsWhenStartUpFailed) {
    board::StartUpMonitor monitor;
    monitor.reportEnd("Duplicate \"x\" switch");
    board::StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_FALSE(outcome.populated);
    EXPECT_EQ(outcome.reason, "Duplicate \"x\" switch");
}

TEST(StartUpMonitorTest, TheFirstEndCounts) {
    board::StartUpMonitor ready;
    ready.reportEnd(nullptr);
    ready.reportEnd("late");
    EXPECT_TRUE(ready.wait().populated);
    board::StartUpMonitor failed;
    failed.reportEnd("first");
    failed.reportEnd("second");
    failed.reportEnd(nullptr);
    EXPECT_EQ(failed.wait().reason, "first");
}

TEST(StartUpMonitorTest, WakesWhoeverWaits) {
    board::StartUpMonitor monitor;
    auto waiting = std::async(std::launch::async, [&monitor] { return monitor.wait().populated; });
    monitor.reportEnd(nullptr);
    EXPECT_TRUE(waiting.get());
}

} // namespace
