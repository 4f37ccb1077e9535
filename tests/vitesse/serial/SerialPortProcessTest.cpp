#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/vitesse/serial/SerialBench.hpp"
#include "vitesse/SerialPort.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

using serial_test::SerialBench;
using testing::ExitedWithCode;

namespace {

constexpr int yes = 7;
constexpr int no = 8;

/// What concerns the whole process happens in a child. What the child prints becomes its error output,
/// which is what can be compared.
class SerialPortProcessTest : public SerialBench {
protected:
    SerialPortProcessTest() { letPrint(); }
};

TEST_F(SerialPortProcessTest, ALineThatCannotBeFlushedEndsTheProcessSuccessfully) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            SerialPort port(device(), SerialPort::baud9600);
            calls.tcflushFails = true;
            port.Open();
            port.setBaud(SerialPort::baud9600);
            std::_Exit(no);
        },
        ExitedWithCode(0),
        "^SerialPort::SetBaud\\(\\): Setting baud rate for /dev/pts/[0-9]+\n"
        "SerialPort::SetBaud\\(\\): Failed to set port options\n$");
}

TEST_F(SerialPortProcessTest, SoDoesTheLineOfASwitch) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            calls.tcflushFails = true;
            VitesseSerialCommunications const communications(application, false, device());
            std::_Exit(no);
        },
        ExitedWithCode(0), "SerialPort::SetBaud\\(\\): Failed to set port options\n$");
}

// A descriptor of 0 counts as closed, with all that follows from it.
TEST_F(SerialPortProcessTest, ADeviceWithDescriptorZeroIsNeverClosed) {
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            bool isUsed = false;
            {
                SerialPort port(device(), SerialPort::baud9600);
                isUsed = port.Open() && fcntl(STDIN_FILENO, F_GETFD) == 0 && port.writeByte('x') == 1;
                port.Close();
                isUsed = isUsed && port.writeByte('y') == 1;
            }
            std::_Exit(isUsed && fcntl(STDIN_FILENO, F_GETFD) == 0 ? yes : no);
        },
        ExitedWithCode(yes), "^$");
}

TEST_F(SerialPortProcessTest, TheDeviceDoesNotBecomeTheControllingTerminal) {
    EXPECT_EXIT(
        {
            bool const leads = setsid() != -1;
            SerialPort port(device(), SerialPort::baud9600);
            bool const opens = port.Open();
            std::_Exit(leads && opens && open("/dev/tty", O_RDWR) == -1 ? yes : no);
        },
        ExitedWithCode(yes), "^$");
}

} // namespace
