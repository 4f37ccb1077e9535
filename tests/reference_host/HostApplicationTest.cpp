#include "reference_host/HostApplication.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"

using reference_host::HostApplication;
using reference_host::LogMessage;
using reference_host::LogSink;

using test_support::Lines;
using test_support::NullMemory;
using test_support::RecordingLog;

namespace {

class HostApplicationTest : public testing::Test {
protected:
    RecordingLog log;
    NullMemory memory;
    HostApplication application{log, memory};
};

TEST_F(HostApplicationTest, EachOperationArrivesAsItself) {
    Application& asApplication = application;
    asApplication.logCritical("critical %d", 1);
    asApplication.logError("error %d", 2);
    asApplication.logWarning("warning %d", 3);
    asApplication.logInfo("info %d", 4);
    asApplication.logDebug("debug %d", 5);
    asApplication.log(3, "level %d", 6);
    EXPECT_EQ(log.lines(), (Lines{"critical|critical 1", "error|error 2", "warning|warning 3", "info|info 4",
                                  "debug|debug 5", "3|level 6"}));
}

TEST_F(HostApplicationTest, OnlyALevelHasALevel) {
    class Levels : public LogSink {
    public:
        void write(LogMessage const& message) override { levels.push_back(message.level); }
        std::vector<unsigned int> levels;
    };
    Levels levels;
    HostApplication levelled(levels, memory);
    levelled.logError("error");
    levelled.log(4, "level");
    EXPECT_EQ(levels.levels, (std::vector<unsigned int>{0, 4}));
}

TEST_F(HostApplicationTest, KeepsLineEndsAsTheyAre) {
    application.logInfo("with\n");
    application.logInfo("without");
    application.logInfo("%s", "");
    EXPECT_EQ(log.lines(), (Lines{"info|with\n", "info|without", "info|"}));
}

TEST_F(HostApplicationTest, FormatsTextsOfAnyLength) {
    for (std::size_t const length : {1U, 127U, 128U, 1023U, 1024U, 4096U, 1000000U}) {
        std::string const value(length, 'x');
        application.logError("<%s>", value.c_str());
        ASSERT_EQ(log.lines().back(), "error|<" + value + ">");
    }
}

TEST_F(HostApplicationTest, TextThatArrivesAsAValueIsNoFormat) {
    application.logError("%s", "100%s%n%d");
    EXPECT_EQ(log.lines().back(), "error|100%s%n%d");
}

TEST_F(HostApplicationTest, AMessageThatCannotBeFormattedIsStillHeard) {
    wchar_t const invalid[] = {static_cast<wchar_t>(0x7FFFFFFF), 0};
    application.logError("register %ls", invalid);
    EXPECT_EQ(log.lines().back(), "error|(values do not fit the format) register %ls");
}

TEST_F(HostApplicationTest, CallsTheSinkOnceAtATime) {
    class Overlap : public LogSink {
    public:
        void write(LogMessage const&) override {
            ++entered; // not atomic: the thread sanitizer sees two at a time, and so does the count
            std::this_thread::yield();
            ++left;
        }
        int entered = 0;
        int left = 0;
    };
    Overlap overlap;
    HostApplication serialised(overlap, memory);
    auto write = [&serialised] {
        for (int i = 0; i < 2000; ++i) {
            serialised.log(0, "message %d", i);
        }
    };
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back(write);
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(overlap.entered, 8000);
    EXPECT_EQ(overlap.left, 8000);
}

TEST_F(HostApplicationTest, ASinkThatThrowsLosesItsMessageAndNothingElse) {
    class Failing : public LogSink {
    public:
        void write(LogMessage const&) override {
            ++calls;
            throw std::runtime_error("the disk is full");
        }
        int calls = 0;
    };
    Failing failing;
    HostApplication losing(failing, memory);
    EXPECT_NO_THROW(losing.logError("lost"));
    EXPECT_NO_THROW(losing.log(0, "lost too"));
    EXPECT_EQ(failing.calls, 2);
}

TEST_F(HostApplicationTest, GivesTheMemoryThatItWasGiven) {
    EXPECT_EQ(&application.getPhysicalMemory(), &memory);
}

TEST_F(HostApplicationTest, HasOneRegistryOfItsOwn) {
    HostApplication other(log, memory);
    EXPECT_EQ(&application.getThreads(), &application.getThreads());
    EXPECT_NE(&application.getThreads(), &other.getThreads());
}

} // namespace
