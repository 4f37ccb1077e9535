#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "reference_host/HostApplication.hpp"
#include "simulation/PseudoTerminal.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/vitesse/serial/SystemCalls.hpp"

namespace serial_test {

constexpr std::uint64_t second = 1'000'000'000;

/// A serial line whose far end is in the test's hand, and what the process says meanwhile.
class SerialBench : public testing::Test {
protected:
    SerialBench() { testing::internal::CaptureStdout(); }

    ~SerialBench() override {
        simulation::VirtualClock::adopt(nullptr);
        if (_isCapturing) {
            testing::internal::GetCapturedStdout();
        }
    }

    /// What the process has printed since the last call.
    std::string printed() {
        std::string const text = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return text;
    }

    /// Stops looking at the standard output, for tests that fork.
    void letPrint() {
        testing::internal::GetCapturedStdout();
        _isCapturing = false;
    }

    /// From now on the test's thread waits in simulated time.
    void simulateTime() { simulation::VirtualClock::adopt(&clock); }

    /// Has the text come down the line at that time; it is there before anybody can look again.
    void sendAt(std::uint64_t nanoseconds, std::string const& text) {
        clock.callAt(nanoseconds, [this, text] { send(text); });
    }

    /// Sends to the device and waits until it is there.
    void send(std::string const& text) {
        ASSERT_EQ(line.send(text), text.size());
        ASSERT_TRUE(line.waitUntilReadable(text.size()));
    }

    /// What was written to the device; waits until it is that long.
    std::string written(std::size_t length) {
        std::string text;
        while (text.size() < length) {
            pollfd wait{line.getDescriptor(), POLLIN, 0};
            if (poll(&wait, 1, patienceMilliseconds) != 1) {
                ADD_FAILURE() << "only " << text.size() << " characters were written";
                break;
            }
            text += line.receive();
        }
        return text;
    }

    std::string const& device() const { return line.getDevicePath(); }

    static constexpr int patienceMilliseconds = 10'000;

    simulation::VirtualClock clock;
    SystemCalls calls;
    simulation::PseudoTerminal line;
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};

private:
    bool _isCapturing = true;
};

} // namespace serial_test
