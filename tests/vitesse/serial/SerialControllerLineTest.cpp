#include <gtest/gtest.h>

#include <memory>

#include "reference_host/HostApplication.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

using reference_host::XmlDocument;
using simulation::SerialController;
using simulation::VirtualClock;
using test_support::Lines;
using MiiController = VitesseManagementCommunications::MiiManagementLocation;

namespace {

constexpr std::uint64_t second = 1'000'000'000;

/// The driver on the line of a board's controller, down to the chip.
class SerialControllerLineTest : public testing::Test {
protected:
    ~SerialControllerLineTest() override { VirtualClock::adopt(nullptr); }

    /// The test waits in simulated time from now on, which does not go by before the controller has
    /// dealt with the command that comes and so many characters of its answer are there.
    void simulateTimeAfterNextCommand(std::size_t answer = 0) {
        VirtualClock::adopt(&clock);
        unsigned const commands = controller.getCommands() + 1;
        clock.callAt(clock.getNanoseconds() + 1, [this, commands, answer] {
            EXPECT_TRUE(controller.waitForCommands(commands));
            // In vain when the driver's first look at the line found them already.
            controller.getTerminal().waitUntilReadable(answer);
        });
    }

    simulation::Vsc7390TestSide& chip() { return board.getVitesse(0); }

    std::unique_ptr<XmlDocument> document =
        XmlDocument::fromText("<switches><switch id='0' switchModel='vsc7390'/></switches>", "board");
    simulation::SimulatedBoard board{*document};
    SerialController controller{board};
    VirtualClock clock;
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    VitesseSerialCommunications communications{application, false, controller.getDevicePath()};
};

TEST_F(SerialControllerLineTest, IdentifiesTheChip) {
    unsigned int identifier = 0;
    EXPECT_TRUE(communications.readRegister({7, 0, 0x18}, identifier));
    EXPECT_EQ(identifier, 0x07390000U);
    EXPECT_EQ(controller.getReceived(), "r 7 0 24\r\n");
    EXPECT_EQ(controller.getSent(), "0x07390000\r\n");
}

TEST_F(SerialControllerLineTest, WritesAVlanEntryAndReadsItBack) {
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xE0}, 10));
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xD0}, 0x10000022));
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xE0}, 11));
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xD0}, 1));
    unsigned int word = 0;
    EXPECT_TRUE(communications.readRegister({2, 0, 0xD0}, word));
    EXPECT_EQ(word, 0x07FFFFFCU) << "VLAN 11 is as the chip starts";
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xE0}, 10));
    EXPECT_TRUE(communications.writeRegister({2, 0, 0xD0}, 1));
    EXPECT_TRUE(communications.readRegister({2, 0, 0xD0}, word));
    EXPECT_EQ(word, 0x10000020U);
    EXPECT_EQ(controller.getReceived(), "w 2 0 224 10\r\nw 2 0 208 268435490\r\nw 2 0 224 11\r\n"
                                        "w 2 0 208 1\r\nr 2 0 208\r\nw 2 0 224 10\r\nw 2 0 208 1\r\n"
                                        "r 2 0 208\r\n");
    EXPECT_EQ(controller.getSent(), "0x07fffffc\r\n0x10000020\r\n");
    EXPECT_EQ(chip().getVlanEntry(10).ports, 0x8U);
    EXPECT_TRUE(chip().getVlanEntry(10).sourceCheck);
    EXPECT_EQ(board.getMisuse().getSize(), 0U);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialControllerLineTest, ReadsAndWritesAPhy) {
    EXPECT_TRUE(communications.phyWriteRegister(MiiController::controller1, 20, 4, 0x01E1));
    unsigned short value = 0;
    EXPECT_TRUE(communications.phyReadRegister(MiiController::controller1, 20, 4, value));
    EXPECT_EQ(value, 0x01E1);
    EXPECT_EQ(chip().peek("phy 20", 4), 0x01E1U);
    EXPECT_EQ(controller.getReceived(), "o 20 4 481\r\ni 20 4\r\n");
    EXPECT_EQ(controller.getSent(), "0x01e1\r\n");
    EXPECT_EQ(board.getMisuse().getSize(), 0U);
}

TEST_F(SerialControllerLineTest, SilenceTimesOut) {
    controller.disturb(SerialController::Disturbance::silent);
    simulateTimeAfterNextCommand();
    unsigned int value = 5;
    EXPECT_FALSE(communications.readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(
        log.lines(),
        Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 0 \n", "error|"}));
}

TEST_F(SerialControllerLineTest, AShortAnswerTimesOut) {
    controller.disturb(SerialController::Disturbance::shortened, 2);
    simulateTimeAfterNextCommand(6);
    unsigned short value = 5;
    EXPECT_FALSE(communications.phyReadRegister(MiiController::controller1, 3, 2, value));
    EXPECT_EQ(value, 5);
    EXPECT_EQ(log.lines(),
              Lines({"error|VitesseSwitch::ReadRegister ERROR expected: 12 Got: 6 \n", "error|0x0007"}));
}

TEST_F(SerialControllerLineTest, AGarbledAnswerIsZero) {
    controller.disturb(SerialController::Disturbance::garbled);
    unsigned int value = 5;
    EXPECT_TRUE(communications.readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(value, 0U);
}

TEST_F(SerialControllerLineTest, ALateAnswerIsTakenWithinTheTimeOut) {
    controller.delayAnswers(clock, 3 * second);
    simulateTimeAfterNextCommand();
    clock.callAt(4 * second, [this] { EXPECT_TRUE(controller.getTerminal().waitUntilReadable(12)); });
    unsigned int value = 5;
    EXPECT_TRUE(communications.readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(value, 0x07390000U);
    EXPECT_GE(clock.getNanoseconds(), 3 * second);
}

TEST_F(SerialControllerLineTest, ATooLateAnswerIsMissed) {
    controller.delayAnswers(clock, 7 * second);
    simulateTimeAfterNextCommand();
    unsigned int value = 5;
    EXPECT_FALSE(communications.readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(controller.getSent(), "");
    clock.advanceNanoseconds(2 * second);
    EXPECT_EQ(controller.getSent(), "0x07390000\r\n");
}

} // namespace
