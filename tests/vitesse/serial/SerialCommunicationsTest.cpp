#include "tests/support/TemporaryFile.hpp"
#include "tests/vitesse/serial/SerialBench.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

using serial_test::SerialBench;
using test_support::Lines;
using Controller = VitesseManagementCommunications::MiiManagementLocation;

namespace {

constexpr char const* nowhere = "/nonexistent/ttyS7";

/// Construction, and commands that have no answer or a good one.
class SerialCommunicationsTest : public SerialBench {
protected:
    VitesseSerialCommunications communications{application, false, device()};
};

TEST_F(SerialCommunicationsTest, OpensTheLineAt9600Baud) {
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + device() + "\n");
    EXPECT_EQ(log.lines(), Lines());
    termios const settings = line.getSettings();
    EXPECT_EQ(cfgetispeed(&settings), static_cast<speed_t>(B9600));
    EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B9600));
    EXPECT_EQ(line.receive(), "") << "nothing is sent yet";
}

TEST_F(SerialCommunicationsTest, TheFlagHasNoEffect) {
    VitesseSerialCommunications flagged(application, true, device());
    send("0x0739000A\r\n");
    unsigned int value = 0;
    EXPECT_TRUE(flagged.readRegister({7, 0, 24}, value));
    EXPECT_EQ(value, 0x0739000AU);
}

TEST_F(SerialCommunicationsTest, TheUsualDeviceIsTheSecondSerialPort) {
    printed();
    VitesseSerialCommunications const usual(application, false);
    EXPECT_NE(printed().find("SerialPort::SetBaud(): Setting baud rate for /dev/ttyS1\n"), std::string::npos);
}

TEST_F(SerialCommunicationsTest, ALineThatDoesNotOpenIsReported) {
    printed();
    {
        VitesseSerialCommunications const closed(application, false, nowhere);
        EXPECT_EQ(log.take(),
                  Lines({"error|VitesseSerialCommunications::VitesseSerialCommunications Failed to open "
                         "Serail Port\n",
                         "error|VitesseSerialCommunications::VitesseSerialCommunications Failed to set "
                         "baud\n"}));
        EXPECT_EQ(printed(), "There was an error!\n"
                             "SerialPort::SetBaud(): Setting baud rate for /nonexistent/ttyS7\n"
                             "SerialPort::SetBaud(): Failed to get serial port options\n");
    }
    EXPECT_EQ(printed(), "SerialPort::Close() Failed Bad file descriptor\n");
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialCommunicationsTest, ADeviceThatIsNoLineIsReported) {
    test_support::TemporaryFile const file;
    printed();
    VitesseSerialCommunications const noLine(application, false, file.path());
    EXPECT_EQ(log.lines(), Lines({"error|VitesseSerialCommunications::VitesseSerialCommunications Failed "
                                  "to set baud\n"}));
    EXPECT_EQ(printed(), "SerialPort::SetBaud(): Setting baud rate for " + file.path() +
                             "\nSerialPort::SetBaud(): Failed to get serial port options\n");
}

TEST_F(SerialCommunicationsTest, ReadsARegister) {
    send("0x0000beef\r\n");
    unsigned int value = 1;
    EXPECT_TRUE(communications.readRegister({1, 4, 16}, value));
    EXPECT_EQ(value, 0xBEEFU);
    EXPECT_EQ(written(10), "r 1 4 16\r\n");
    EXPECT_EQ(line.receive(), "");
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialCommunicationsTest, WritesNumbersInDecimalWithoutPadding) {
    send("0xFFFFFFFF\r\n0x00000000\r\n");
    unsigned int value = 1;
    EXPECT_TRUE(communications.readRegister({0, 0, 0}, value));
    EXPECT_EQ(value, 0xFFFFFFFFU);
    EXPECT_TRUE(communications.readRegister({65535, 1000, 255}, value));
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(written(27), "r 0 0 0\r\nr 65535 1000 255\r\n");
}

TEST_F(SerialCommunicationsTest, WritesARegisterAndAwaitsNoAnswer) {
    simulateTime();
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xD0}, 0x10000022));
    EXPECT_EQ(written(21), "w 2 0 208 268435490\r\n");
    EXPECT_TRUE(communications.writeRegister({6, 7, 0}, 0xFFFFFFFF));
    EXPECT_EQ(written(20), "w 6 7 0 4294967295\r\n");
    EXPECT_TRUE(communications.writeRegister({7, 0, 2}, 0));
    EXPECT_EQ(written(11), "w 7 0 2 0\r\n");
    EXPECT_EQ(line.receive(), "");
    EXPECT_EQ(clock.getNanoseconds(), 0U);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialCommunicationsTest, ReadsAPhyWithoutItsController) {
    for (Controller const controller : {Controller::controller0, Controller::controller1}) {
        send("0x0420\r\n");
        unsigned short value = 1;
        EXPECT_TRUE(communications.phyReadRegister(controller, 23, 3, value));
        EXPECT_EQ(value, 0x0420);
        EXPECT_EQ(written(8), "i 23 3\r\n");
    }
    EXPECT_EQ(line.receive(), "");
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialCommunicationsTest, WritesAPhyWithoutItsController) {
    for (Controller const controller : {Controller::controller0, Controller::controller1}) {
        EXPECT_TRUE(communications.phyWriteRegister(controller, 0, 22, 0xFFFF));
        EXPECT_EQ(written(14), "o 0 22 65535\r\n");
    }
    EXPECT_TRUE(communications.phyWriteRegister(Controller::controller1, 31, 0, 0));
    EXPECT_EQ(written(10), "o 31 0 0\r\n");
    EXPECT_EQ(line.receive(), "");
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialCommunicationsTest, AWriteThatFailsIsReported) {
    VitesseSerialCommunications closed(application, false, nowhere);
    log.take();
    EXPECT_FALSE(closed.writeRegister({2, 0, 5}, 1));
    EXPECT_EQ(log.lines(), Lines({"error|VitesseSerialCommunications::writeRegister write tty failed \n"}));
}

TEST_F(SerialCommunicationsTest, AWriteToAPhyIsNotLookedAt) {
    VitesseSerialCommunications closed(application, false, nowhere);
    log.take();
    EXPECT_TRUE(closed.phyWriteRegister(Controller::controller1, 3, 0, 0x8000));
    EXPECT_EQ(log.lines(), Lines());
}

} // namespace
