#include "switchctl/StartUpMonitor.hpp"

#include <gtest/gtest.h>

#include <future>
#include <string>

using reference_host::LogMessage;
using switchctl::StartUpMonitor;

namespace {

LogMessage message(std::string const& text) {
    LogMessage result;
    result.text = text;
    return result;
}

TEST(StartUpMonitorTest, EndsWhenTheSwitchesAreReady) {
    StartUpMonitor monitor;
    monitor.reportPopulated();
    StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_TRUE(outcome.populated);
    EXPECT_EQ(outcome.reason, "");
}

TEST(StartUpMonitorTest, EndsWhenAnEventThrew) {
    StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::processEvent. Caught \"Duplicate \"x\" switch\"\n"));
    StartUpMonitor::Outcome const outcome = monitor.wait();
    EXPECT_FALSE(outcome.populated);
    EXPECT_EQ(outcome.reason, "Duplicate \"x\" switch");
}

TEST(StartUpMonitorTest, EndsWhenTheThreadGaveUp) {
    StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::run [0000beef] caught out of memory\n"));
    EXPECT_EQ(monitor.wait().reason, "out of memory");
}

TEST(StartUpMonitorTest, OtherMessagesDoNotEndIt) {
    StartUpMonitor monitor;
    monitor.inspect(message("SwitchManagementThread::run [0000beef]\n"));
    monitor.inspect(message("Unknown port type SwitchManagementThread::processEvent. Caught \"x\"\n"));
    monitor.inspect(message(""));
    monitor.reportPopulated();
    EXPECT_TRUE(monitor.wait().populated);
}

TEST(StartUpMonitorTest, TheFirstEndCounts) {
    StartUpMonitor ready;
    ready.reportPopulated();
    ready.inspect(message("SwitchManagementThread::processEvent. Caught \"late\"\n"));
    EXPECT_TRUE(ready.wait().populated);
    StartUpMonitor failed;
    failed.inspect(message("SwitchManagementThread::processEvent. Caught \"first\"\n"));
    failed.inspect(message("SwitchManagementThread::processEvent. Caught \"second\"\n"));
    failed.reportPopulated();
    EXPECT_EQ(failed.wait().reason, "first");
}

TEST(StartUpMonitorTest, WakesWhoeverWaits) {
    StartUpMonitor monitor;
    auto waiting = std::async(std::launch::async, [&monitor] { return monitor.wait().populated; });
    monitor.reportPopulated();
    EXPECT_TRUE(waiting.get());
}

} // namespace
