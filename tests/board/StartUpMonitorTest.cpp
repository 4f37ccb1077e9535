#include "board/StartUpMonitor.hpp"

#include <gtest/gtest.h>

#include <future>
#include <string>

using board::StartUpMonitor;
using reference_host::LogMessage;

namespace {

LogMessage message(std::string const& text) {
    LogMessage result;
    result.text = text;
    return result;
}

TEST(StartUpMonitorTest, EndsWhenTheSwitchesAreReady) {
    board::StartUpMonitor monitor;
    monitor.reportPopulated();
    board::StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_TRUE(outcome.populated);
    EXPECT_EQ(outcome.reason, "");
}

TEST(StartUpMonitorTest, EndsWhenAnEventThrew) {
    board::StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::processEvent. Caught \"Duplicate \"x\" switch\"\n"));
    board::StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_FALSE(outcome.populated);
    EXPECT_EQ(outcome.reason, "Duplicate \"x\" switch");
}

TEST(StartUpMonitorTest, EndsWhenTheThreadGaveUp) {
    board::StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::run [0000beef] caught out of memory\n"));
    EXPECT_EQ(monitor.wait().reason, "out of memory");
}

TEST(StartUpMonitorTest, OtherMessagesDoNotEndIt) {
    board::StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::run [0000beef]\n"));
    monitor.inspect(message("Unknown port type SwitchManagementThread::processEvent. Caught \"x\"\n"));
    monitor.inspect(message(""));
    monitor.reportPopulated();
    EXPECT_TRUE(monitor.wait().populated);
}

TEST(StartUpMonitorTest, TheFirstEndCounts) {
    board::StartUpMonitor ready;
    ready.reportPopulated();
    ready.inspect(message("SwitchManagementThread::processEvent. Caught \"late\"\n"));
    EXPECT_TRUE(ready.wait().populated);
    board::StartUpMonitor failed;
    failed.inspect(message("SwitchManagementThread::processEvent. Caught \"first\"\n"));
    failed.inspect(message("SwitchManagementThread::processEvent. Caught \"second\"\n"));
    failed.reportPopulated();
    EXPECT_EQ(failed.wait().reason, "first");
}

TEST(StartUpMonitorTest, WakesWhoeverWaits) {
    board::StartUpMonitor monitor;
    auto waiting = std::async(std::launch::async, [&monitor] { return monitor.wait().populated; });
    monitor.reportPopulated();
    EXPECT_TRUE(waiting.get());
}

} // namespace
