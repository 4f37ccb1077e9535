#include "vitesse/SerialPort.hpp"

#include <fcntl.h>
#include <unistd.h>

#include "tests/support/TemporaryFile.hpp"
#include "tests/vitesse/serial/SerialBench.hpp"

using serial_test::second;
using serial_test::SerialBench;

namespace {

constexpr char const* noSuchLine = "/nonexistent/ttyS7";

/// The lowest number that the system would give to the next file.
int nextDescriptor() {
    int const descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}

class SerialPortTest : public SerialBench {};

TEST_F(SerialPortTest, IsClosedAndSilentAtFirst) {
    int const next = nextDescriptor();
    {
        SerialPort port(device(), SerialPort::baud9600);
        EXPECT_EQ(port.getBaud(), SerialPort::baud9600);
        EXPECT_EQ(nextDescriptor(), next);
        port.Close();
    }
    EXPECT_EQ(printed(), "");
}

TEST_F(SerialPortTest, TheSpeedIsTheCodeOfTermios) {
    EXPECT_EQ(static_cast<unsigned>(SerialPort::baud9600), 13U);
}

TEST_F(SerialPortTest, OpensTheDeviceForBothDirectionsWithoutWaiting) {
    SerialPort port(device(), SerialPort::baud9600);
    int const descriptor = nextDescriptor();
    EXPECT_TRUE(port.Open());
    int const flags = fcntl(descriptor, F_GETFL);
    ASSERT_NE(flags, -1);
    EXPECT_EQ(flags & O_ACCMODE, O_RDWR);
    EXPECT_NE(flags & O_NONBLOCK, 0);
    EXPECT_EQ(printed(), "");
}

TEST_F(SerialPortTest, ClosesTheDevice) {
    SerialPort port(device(), SerialPort::baud9600);
    int const descriptor = nextDescriptor();
    EXPECT_TRUE(port.Open());
    port.Close();
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    port.Close();
    EXPECT_EQ(printed(), "");
}

TEST_F(SerialPortTest, TheDestructorClosesTheDevice) {
    int const descriptor = nextDescriptor();
    {
        SerialPort port(device(), SerialPort::baud9600);
        EXPECT_TRUE(port.Open());
        EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
    }
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    EXPECT_EQ(printed(), "");
}

TEST_F(SerialPortTest, OpeningAgainClosesFirstAndSaysSo) {
    SerialPort port(device(), SerialPort::baud9600);
    int const descriptor = nextDescriptor();
    EXPECT_TRUE(port.Open());
    EXPECT_EQ(printed(), "");
    EXPECT_TRUE(port.Open());
    EXPECT_EQ(printed(), "SerialPort::Open() Port was already open - now closing port!\n");
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1) << "the number was free again";
    EXPECT_EQ(nextDescriptor(), descriptor + 1);
}

TEST_F(SerialPortTest, OpensAnotherDeviceByName) {
    simulation::PseudoTerminal other;
    SerialPort port(device(), SerialPort::baud9600);
    EXPECT_TRUE(port.Open());
    EXPECT_TRUE(port.Open(other.getDevicePath()));
    EXPECT_EQ(printed(), "SerialPort::Open() Port was already open - now closing port!\n");
    EXPECT_TRUE(port.setBaud(SerialPort::baud9600));
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + other.getDevicePath() + "\n");
    port.Close();
    EXPECT_TRUE(port.Open()) << "the new name stays";
    EXPECT_EQ(port.writeByte('x'), 1);
    pollfd wait{other.getDescriptor(), POLLIN, 0};
    EXPECT_EQ(poll(&wait, 1, patienceMilliseconds), 1);
    EXPECT_EQ(other.receive(), "x");
}

TEST_F(SerialPortTest, ADeviceThatIsNotThereDoesNotOpen) {
    SerialPort port(noSuchLine, SerialPort::baud9600);
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(printed(), "There was an error!\n");
}

// A descriptor of -1 counts as open, and closing it fails.
TEST_F(SerialPortTest, SaysThatClosingFailed) {
    SerialPort port(noSuchLine, SerialPort::baud9600);
    EXPECT_FALSE(port.Open());
    printed();
    port.Close();
    EXPECT_EQ(printed(), "SerialPort::Close() Failed Bad file descriptor\n");
    port.Close();
    EXPECT_EQ(printed(), "") << "it counts as closed now";
}

TEST_F(SerialPortTest, OpeningAfterAFailureClosesFirstToo) {
    SerialPort port(noSuchLine, SerialPort::baud9600);
    EXPECT_FALSE(port.Open());
    printed();
    EXPECT_TRUE(port.Open(device()));
    EXPECT_EQ(printed(), "SerialPort::Open() Port was already open - now closing port!\n"
                         "SerialPort::Close() Failed Bad file descriptor\n");
}

TEST_F(SerialPortTest, SetsTheLineUp) {
    termios settings = line.getSettings();
    settings.c_cflag |= PARENB | CSTOPB | CRTSCTS;
    settings.c_cflag &= ~static_cast<tcflag_t>(CLOCAL | CREAD | CSIZE);
    settings.c_cflag |= CS7;
    settings.c_lflag |= ICANON | ECHO | ECHOE | ISIG;
    settings.c_iflag |= ICRNL | IXON;
    settings.c_oflag |= OPOST | ONLCR;
    int const descriptor = open(device().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(tcsetattr(descriptor, TCSANOW, &settings), 0);
    close(descriptor);

    SerialPort port(device(), static_cast<SerialPort::BaudRate>(B115200));
    ASSERT_TRUE(port.Open());
    EXPECT_TRUE(port.setBaud(SerialPort::baud9600));
    EXPECT_EQ(port.getBaud(), SerialPort::baud9600);
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + device() + "\n");
    settings = line.getSettings();
    EXPECT_EQ(cfgetispeed(&settings), static_cast<speed_t>(B9600));
    EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B9600));
    EXPECT_EQ(settings.c_cflag & (CLOCAL | CREAD), static_cast<tcflag_t>(CLOCAL | CREAD));
    EXPECT_EQ(settings.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    EXPECT_EQ(settings.c_cflag & (PARENB | CSTOPB | CRTSCTS), 0U);
    EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ECHOE | ECHONL | ISIG | IEXTEN), 0U);
    EXPECT_EQ(settings.c_iflag & (IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | IXON), 0U);
    EXPECT_EQ(settings.c_oflag & OPOST, 0U);
    EXPECT_EQ(settings.c_cc[VMIN], 1);
    EXPECT_EQ(settings.c_cc[VTIME], 0);
}

TEST_F(SerialPortTest, SettingTheSpeedDropsWhatHasComeIn) {
    SerialPort port(device(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    send("old");
    EXPECT_TRUE(port.setBaud(SerialPort::baud9600));
    send("new");
    std::string text;
    EXPECT_EQ(port.Read(text, 3), 3);
    EXPECT_EQ(text, "new");
}

TEST_F(SerialPortTest, AFileHasNoLineToSetUp) {
    test_support::TemporaryFile const file;
    SerialPort port(file.path(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    EXPECT_FALSE(port.setBaud(static_cast<SerialPort::BaudRate>(B19200)));
    EXPECT_EQ(port.getBaud(), static_cast<SerialPort::BaudRate>(B19200)) << "what was asked for last";
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + file.path() +
                             "\nSerialPort::SetBaud(): Failed to get serial port options\n");
}

TEST_F(SerialPortTest, AClosedPortHasNoLineToSetUp) {
    SerialPort port(noSuchLine, SerialPort::baud9600);
    EXPECT_FALSE(port.Open());
    EXPECT_FALSE(port.setBaud(SerialPort::baud9600));
    EXPECT_EQ(printed(), "There was an error!\n"
                         "SerialPort::SetBaud(): Setting baud rate for /nonexistent/ttyS7\n"
                         "SerialPort::SetBaud(): Failed to get serial port options\n");
}

TEST_F(SerialPortTest, SaysThatTheSpeedIsNone) {
    SerialPort port(device(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    EXPECT_FALSE(port.setBaud(static_cast<SerialPort::BaudRate>(0x0FFF'FFFF)));
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + device() +
                             "\nSerialPort::SetBaud(): Failed to set input baud\n");
}

TEST_F(SerialPortTest, SaysThatTheOutputSpeedFailed) {
    SerialPort port(device(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    calls.cfsetospeedFails = true;
    EXPECT_FALSE(port.setBaud(SerialPort::baud9600));
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + device() +
                             "\nSerialPort::SetBaud(): Failed to set output baud\n");
}

TEST_F(SerialPortTest, SaysThatTheSettingsWereRefused) {
    SerialPort port(device(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    calls.tcsetattrFails = true;
    EXPECT_FALSE(port.setBaud(SerialPort::baud9600));
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + device() +
                             "\nSerialPort::SetBaud(): Failed to set port options\n");
}

TEST_F(SerialPortTest, PollingWaitsForInputWithoutLimit) {
    SerialPort port(device(), SerialPort::baud9600);
    int const descriptor = nextDescriptor();
    ASSERT_TRUE(port.Open());
    port.configureForPolling();
    calls.pollResult = 1;
    EXPECT_TRUE(port.poll());
    ASSERT_EQ(calls.polls.size(), 1U);
    EXPECT_EQ(calls.polls[0].entries, 0U);
    EXPECT_EQ(calls.polls[0].first.fd, descriptor);
    EXPECT_EQ(calls.polls[0].first.events, POLLIN);
    EXPECT_EQ(calls.polls[0].first.revents, 0);
    EXPECT_EQ(calls.polls[0].timeout, -1);
}

TEST_F(SerialPortTest, PollingCountsOneAndTwoAsSuccess) {
    SerialPort port(device(), SerialPort::baud9600);
    ASSERT_TRUE(port.Open());
    port.configureForPolling();
    port.configureForPolling();
    std::vector<bool> results;
    for (int const result : {-1, 0, 1, 2, 3}) {
        calls.pollResult = result;
        results.push_back(port.poll());
    }
    EXPECT_EQ(results, (std::vector<bool>{false, false, true, true, false}));
}

} // namespace
