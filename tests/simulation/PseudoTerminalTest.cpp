#include "simulation/PseudoTerminal.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using simulation::PseudoTerminal;

namespace {

class PseudoTerminalTest : public testing::Test {
protected:
    PseudoTerminalTest() : device(open(terminal.getDevicePath().c_str(), O_RDWR | O_NOCTTY)) {}
    ~PseudoTerminalTest() override { close(device); }

    std::string readDevice(std::size_t count) const {
        std::string text(count, '\0');
        ssize_t const got = read(device, text.data(), count);
        text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
        return text;
    }

    PseudoTerminal terminal;
    int device;
};

TEST_F(PseudoTerminalTest, IsATerminal) {
    ASSERT_GE(device, 0);
    EXPECT_EQ(isatty(device), 1);
    EXPECT_NE(PseudoTerminal().getDevicePath(), terminal.getDevicePath());
}

TEST_F(PseudoTerminalTest, ChangesNothingOnTheWay) {
    std::string const bytes("a\r\n\0\x03\x11\xFF", 7);
    EXPECT_EQ(terminal.send(bytes), 7U);
    EXPECT_TRUE(terminal.waitUntilReadable(7));
    EXPECT_EQ(readDevice(100), bytes);
    EXPECT_EQ(terminal.receive(), "") << "nothing is echoed";
    ASSERT_EQ(write(device, bytes.data(), bytes.size()), 7);
    std::string received;
    while (received.size() < 7) {
        received += terminal.receive();
    }
    EXPECT_EQ(received, bytes);
}

TEST_F(PseudoTerminalTest, KeepsTheLineWhileNobodyHasTheDeviceOpen) {
    close(device);
    EXPECT_EQ(terminal.send("text"), 4U);
    EXPECT_TRUE(terminal.waitUntilReadable(4));
    device = open(terminal.getDevicePath().c_str(), O_RDWR | O_NOCTTY);
    EXPECT_EQ(readDevice(100), "text");
}

TEST_F(PseudoTerminalTest, LosesWhatTheDeviceHasNoRoomFor) {
    std::string const flood(1'000'000, 'x');
    EXPECT_LT(terminal.send(flood), flood.size());
}

TEST_F(PseudoTerminalTest, ShowsHowTheDeviceIsSet) {
    EXPECT_EQ(terminal.getSettings().c_lflag & (ICANON | ECHO | ISIG), 0U);
    termios settings = terminal.getSettings();
    cfsetspeed(&settings, B19200);
    ASSERT_EQ(tcsetattr(device, TCSANOW, &settings), 0);
    settings = terminal.getSettings();
    EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B19200));
}

} // namespace
