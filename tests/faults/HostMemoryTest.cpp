// What the host keeps doing when there is no memory left.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "board/StartUpMonitor.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/faults/AllocationFaults.hpp"
#include "tests/support/NullMemory.hpp"

using fault_test::AllocationFaults;
using reference_host::LogMessage;

namespace {

constexpr std::uint64_t all = ~std::uint64_t{0};

/// Has all the memory that it wants.
class ExemptSink : public reference_host::LogSink {
public:
    void write(LogMessage const& message) override {
        AllocationFaults::Exemption const exemption;
        messages.push_back(message);
    }

    std::vector<LogMessage> messages;
};

/// Has none.
class GreedySink : public reference_host::LogSink {
public:
    void write(LogMessage const& message) override { texts.push_back(message.text + " and more than that"); }

    std::vector<std::string> texts;
};

TEST(HostMemoryTest, AMessageGetsThroughWithoutMemory) {
    ExemptSink sink;
    test_support::NullMemory memory;
    reference_host::HostApplication application(sink, memory);
    {
        AllocationFaults const faults(1, all);
        application.logError("a message that is longer than a short text, number %d\n", 7);
        application.log(3, "%s\n", "another one that is longer than a short text");
    }
    ASSERT_EQ(sink.messages.size(), 2U);
    EXPECT_EQ(sink.messages[0].operation, LogMessage::Operation::error);
    EXPECT_EQ(sink.messages[0].text, "a message that is longer than a short text, number 7\n");
    EXPECT_EQ(sink.messages[1].operation, LogMessage::Operation::level);
    EXPECT_EQ(sink.messages[1].level, 3U);
    EXPECT_EQ(sink.messages[1].text, "another one that is longer than a short text\n");
}

TEST(HostMemoryTest, OfALongMessageTheBeginningGetsThrough) {
    ExemptSink sink;
    test_support::NullMemory memory;
    reference_host::HostApplication application(sink, memory);
    std::string const text(2000, 'x');
    {
        AllocationFaults const faults(1, all);
        application.logInfo("%s", text.c_str());
    }
    ASSERT_EQ(sink.messages.size(), 1U);
    EXPECT_EQ(sink.messages[0].text, text.substr(0, 511));
}

TEST(HostMemoryTest, ASinkWithoutMemoryLosesItsMessageAndNothingElse) {
    GreedySink sink;
    test_support::NullMemory memory;
    reference_host::HostApplication application(sink, memory);
    {
        AllocationFaults const faults(1, all);
        application.logError("a message that is longer than a short text, number %d\n", 7);
    }
    application.logError("short\n");
    EXPECT_EQ(sink.texts, std::vector<std::string>{"short\n and more than that"});
}

TEST(HostMemoryTest, WhoeverWaitsForStartUpIsToldWithoutMemory) {
    board::StartUpMonitor monitor;
    {
        AllocationFaults const faults(1, all);
        monitor.reportEnd("a reason that is longer than a short text");
    }
    auto const outcome = monitor.wait();
    EXPECT_FALSE(outcome.populated);
    EXPECT_EQ(outcome.reason, "");
}

} // namespace
