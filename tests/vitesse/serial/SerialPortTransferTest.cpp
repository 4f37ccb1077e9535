#include <unistd.h>

#include "tests/vitesse/serial/SerialBench.hpp"
#include "vitesse/SerialPort.hpp"

using serial_test::second;
using serial_test::SerialBench;

namespace {

/// An open port.
class SerialPortTransferTest : public SerialBench {
protected:
    SerialPortTransferTest() {
        EXPECT_TRUE(port.Open());
        EXPECT_TRUE(port.setBaud(SerialPort::baud9600));
        printed();
    }

    SerialPort port{device(), SerialPort::baud9600};
};

TEST_F(SerialPortTransferTest, WritesTheWholeTextAndNothingElse) {
    std::string text("r 1 4 16\r\n\0\n", 12);
    EXPECT_EQ(port.Write(text), 12);
    EXPECT_EQ(written(12), std::string("r 1 4 16\r\n\0\n", 12));
    std::string nothing;
    EXPECT_EQ(port.Write(nothing), 0);
    EXPECT_EQ(line.receive(), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(SerialPortTransferTest, WritesAByte) {
    EXPECT_EQ(port.writeByte('\0'), 1);
    EXPECT_EQ(port.writeByte('\xFF'), 1);
    EXPECT_EQ(written(2), std::string("\0\xFF", 2));
}

TEST_F(SerialPortTransferTest, WritingWithoutADeviceFails) {
    SerialPort closed("/nonexistent/ttyS7", SerialPort::baud9600);
    EXPECT_FALSE(closed.Open());
    std::string text = "text";
    EXPECT_EQ(closed.Write(text), -1);
    EXPECT_EQ(closed.writeByte('x'), -1);
}

TEST_F(SerialPortTransferTest, ReadsWhatIsThereAtOnce) {
    simulateTime();
    send("0x12345678\r\n");
    std::string text;
    EXPECT_EQ(port.Read(text, 12), 12);
    EXPECT_EQ(text, "0x12345678\r\n");
    EXPECT_EQ(clock.getNanoseconds(), 0U);
}

TEST_F(SerialPortTransferTest, AppendsToTheText) {
    send("new");
    std::string text = "old ";
    EXPECT_EQ(port.Read(text, 3), 3);
    EXPECT_EQ(text, "old new");
}

TEST_F(SerialPortTransferTest, KeepsBytesOfAllValues) {
    std::string const bytes("\0\x03\x11\x13\x1A\x7F\x80\xFF", 8);
    send(bytes);
    std::string text;
    EXPECT_EQ(port.Read(text, 8), 8);
    EXPECT_EQ(text, bytes);
}

TEST_F(SerialPortTransferTest, LeavesOnTheLineWhatIsNotAskedFor) {
    send("firstsecond");
    std::string text;
    EXPECT_EQ(port.Read(text, 5), 5);
    EXPECT_EQ(port.Read(text, 6), 6);
    EXPECT_EQ(text, "firstsecond");
}

TEST_F(SerialPortTransferTest, ReadsNothingWhenNothingIsAskedFor) {
    simulateTime();
    send("text");
    std::string text;
    EXPECT_EQ(port.Read(text, 0), 0);
    EXPECT_EQ(text, "");
    EXPECT_EQ(clock.getNanoseconds(), 0U);
}

TEST_F(SerialPortTransferTest, WaitsForTheRestOfPiecesThatComeLate) {
    simulateTime();
    sendAt(second, "0x123");
    sendAt(4 * second, "45678\r\n");
    std::string text;
    EXPECT_EQ(port.Read(text, 12), 12);
    EXPECT_EQ(text, "0x12345678\r\n");
    EXPECT_EQ(clock.getNanoseconds(), 4 * second);
}

// The seconds are counted as whole ones: how long it takes depends on where in a second it starts.
TEST_F(SerialPortTransferTest, GivesUpAfterSixSecondsAtMost) {
    simulateTime();
    std::string text = "before";
    EXPECT_EQ(port.Read(text, 12), 0);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(clock.getNanoseconds(), 6 * second);
}

TEST_F(SerialPortTransferTest, GivesUpAfterFiveSecondsAtLeast) {
    constexpr std::uint64_t sleep = 10'000;
    simulateTime();
    clock.setWallClockPhase(second - sleep);
    std::string text;
    EXPECT_EQ(port.Read(text, 12), 0);
    EXPECT_EQ(clock.getNanoseconds(), 5 * second + sleep);
}

TEST_F(SerialPortTransferTest, SleepsTenMicrosecondsBetweenLooks) {
    simulateTime();
    sendAt(10'000, "1");
    sendAt(20'001, "2");
    std::string text;
    EXPECT_EQ(port.Read(text, 2), 2);
    EXPECT_EQ(clock.getNanoseconds(), 30'000U);
}

TEST_F(SerialPortTransferTest, ReturnsTheFewThatCameInTime) {
    simulateTime();
    send("0x1");
    sendAt(7 * second, "too late");
    std::string text;
    EXPECT_EQ(port.Read(text, 12), 3);
    EXPECT_EQ(text, "0x1");
}

// Every look asks for all twelve, so that what is already there and what comes can be more.
TEST_F(SerialPortTransferTest, TakesTooManyAndWaitsToTheEnd) {
    simulateTime();
    send("0x123");
    sendAt(second, "45678\r\n+++");
    std::string text;
    EXPECT_EQ(port.Read(text, 12), 15);
    EXPECT_EQ(text, "0x12345678\r\n+++");
    EXPECT_EQ(clock.getNanoseconds(), 6 * second);
}

TEST_F(SerialPortTransferTest, ReadingWithoutADeviceTimesOut) {
    SerialPort closed("/nonexistent/ttyS7", SerialPort::baud9600);
    EXPECT_FALSE(closed.Open());
    simulateTime();
    std::string text;
    EXPECT_EQ(closed.Read(text, 12), 0);
    EXPECT_EQ(clock.getNanoseconds(), 6 * second);
}

} // namespace
