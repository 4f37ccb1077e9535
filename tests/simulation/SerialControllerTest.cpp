#include "simulation/SerialController.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "reference_host/XmlDocument.hpp"
#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation::SerialController;
using Disturbance = simulation::SerialController::Disturbance;

namespace {

/// The controller on the line of a terminal, and the same chip over its window.
class SerialControllerTest : public simulation_test::Vsc7390Fixture {
protected:
    SerialControllerTest() : device(open(controller.getDevicePath().c_str(), O_RDWR | O_NOCTTY)) {}
    ~SerialControllerTest() override { close(device); }

    /// Sends characters and waits until the controller has dealt with the lines among them.
    void type(std::string const& text, unsigned lines = 1) {
        commands += lines;
        EXPECT_EQ(::write(device, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        EXPECT_TRUE(controller.waitForCommands(commands));
    }

    /// What has come back; waits until it is that long.
    std::string answer(std::size_t length) const {
        std::string text;
        std::array<char, 64> buffer{};
        while (text.size() < length) {
            pollfd wait{device, POLLIN, 0};
            if (poll(&wait, 1, 10'000) != 1) {
                ADD_FAILURE() << "only \"" << text << "\" came";
                break;
            }
            text.append(buffer.data(),
                        static_cast<std::size_t>(::read(device, buffer.data(), buffer.size())));
        }
        return text;
    }

    std::string ask(std::string const& text, std::size_t length) {
        type(text);
        return answer(length);
    }

    SerialController controller{*_board};
    int device;
    unsigned commands = 0;
};

TEST_F(SerialControllerTest, NeedsABoardWithAVsc7390) {
    auto const document = reference_host::XmlDocument::fromText(
        "<switches><switch id='0' switchModel='88e6096'/></switches>", "board");
    simulation::SimulatedBoard board(*document);
    EXPECT_THROW(SerialController{board}, std::out_of_range);
}

TEST_F(SerialControllerTest, SaysNothingByItself) {
    EXPECT_EQ(controller.getSent(), "");
    EXPECT_EQ(controller.getReceived(), "");
    EXPECT_EQ(controller.getCommands(), 0U);
    EXPECT_EQ(log().getSize(), 0U);
}

TEST_F(SerialControllerTest, ReadsARegisterThatAnswersAtOnce) {
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x07390000\r\n");
    EXPECT_EQ(controller.getReceived(), "r 7 0 24\r\n");
    EXPECT_EQ(controller.getSent(), "0x07390000\r\n");
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SerialControllerTest, ReadsARegisterThatIsFetched) {
    chip().poke("port 20", 0x7A, 0x1ABC);
    EXPECT_EQ(ask("r 6 4 122\r\n", 12), "0x00001abc\r\n");
    EXPECT_EQ(log().getEntry(0).registerName, "CAT_PORT_VLAN");
    EXPECT_EQ(log().getSize(), 1U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SerialControllerTest, WaitsForASlowChip) {
    chip().setBusyTime(Unit::indirectRead, 50'000'000);
    EXPECT_EQ(ask("r 1 0 16\r\n", 12), "0x000005ee\r\n");
}

TEST_F(SerialControllerTest, WritesARegisterWithoutAnAnswer) {
    type("w 2 0 5 16777215\r\n");
    EXPECT_EQ(readAnalyser(0x05), 0xFFFFFFU);
    type("w 2 0 5 0\r\n");
    EXPECT_EQ(readAnalyser(0x05), 0U);
    EXPECT_EQ(controller.getSent(), "");
}

TEST_F(SerialControllerTest, DrivesTheChipThatTheParallelBusDrives) {
    writeAnalyser(0xE0, 10);
    type("w 2 0 208 268435490\r\n");
    EXPECT_EQ(chip().getVlanEntry(10).ports, 0x8U);
    EXPECT_EQ(readVlan(10), 0x10000020U);
    writeVlan(11, 0x4);
    type("w 2 0 224 11\r\nw 2 0 208 1\r\nr 2 0 208\r\n", 3);
    EXPECT_EQ(answer(12), "0x00000004\r\n");
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SerialControllerTest, ReadsAPhy) {
    chip().poke("phy 5", 9, 0x0A0B);
    EXPECT_EQ(ask("i 5 9\r\n", 8), "0x0a0b\r\n");
    EXPECT_EQ(ask("i 23 2\r\n", 8), "0x0007\r\n");
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SerialControllerTest, WritesAPhyWithoutAnAnswer) {
    type("o 5 4 65535\r\no 6 4 1\r\n", 2);
    EXPECT_EQ(chip().peek("phy 5", 4), 0xFFFFU);
    EXPECT_EQ(chip().peek("phy 6", 4), 1U);
    EXPECT_EQ(controller.getSent(), "");
    EXPECT_EQ(misuseText(), "") << "the second waits for the first";
}

TEST_F(SerialControllerTest, AnAbsentPhyReadsAsThePulledUpLine) {
    chip().unplugPhy(5);
    EXPECT_EQ(ask("i 5 2\r\n", 8), "0xffff\r\n");
    EXPECT_EQ(ask("i 31 2\r\n", 8), "0xffff\r\n");
}

TEST_F(SerialControllerTest, TakesCommandsInPiecesAndInOneGo) {
    type("r 7", 0);
    type(" 0 24\r", 0);
    EXPECT_EQ(ask("\n", 12), "0x07390000\r\n");
    type("r 7 0 24\r\ni 0 2\r\n", 2);
    EXPECT_EQ(answer(20), "0x07390000\r\n0x0007\r\n");
}

TEST_F(SerialControllerTest, DoesNotAnswerForAChipThatDoesNot) {
    chip().loseReads(1);
    type("r 2 0 5\r\n");
    chip().failBusAccess(1);
    type("r 7 0 24\r\n");
    chip().hang(Unit::mii1);
    type("i 0 2\r\n");
    type("o 0 4 1\r\n");
    EXPECT_EQ(controller.getSent(), "");
    EXPECT_EQ(chip().peek("phy 0", 4), 0U);
    chip().release(Unit::mii1);
    EXPECT_EQ(ask("i 0 2\r\n", 8), "0x0007\r\n");
}

TEST_F(SerialControllerTest, AnEmptySocketReadsAsTheBusDoes) {
    chip().unplug();
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0xffffffff\r\n");
}

TEST_F(SerialControllerTest, MalformedLinesAreReportedAndNotAnswered) {
    type("r 1 4\r\nw 1 4 16 1\n\r\nr 7 0 24 \r\nq\x01\x80\r\n", 5);
    EXPECT_EQ(misuseText(),
              "serial controller, line, none: malformed command: \"r 1 4\": takes 3 operands\n"
              "serial controller, line, none: malformed command: \"w 1 4 16 1\": no carriage return before "
              "the line feed\n"
              "serial controller, line, none: malformed command: \"\": no such command\n"
              "serial controller, line, none: malformed command: \"r 7 0 24 \": takes 3 operands\n"
              "serial controller, line, none: malformed command: \"q\\x01\\x80\": no such command\n");
    EXPECT_EQ(misuse().getSize(Kind::malformedCommand), 5U);
    EXPECT_EQ(controller.getSent(), "");
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x07390000\r\n");
}

TEST_F(SerialControllerTest, LinesWithoutEndAreCut) {
    type(std::string(1'000, 'x') + "\r\n");
    EXPECT_EQ(misuseText(), "serial controller, line, none: malformed command: \"" + std::string(64, 'x') +
                                "\": too long\n");
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x07390000\r\n");
}

TEST_F(SerialControllerTest, CanBeSilent) {
    controller.disturb(Disturbance::silent);
    type("r 7 0 24\r\ni 0 2\r\nw 2 0 5 1\r\n", 3);
    EXPECT_EQ(controller.getSent(), "");
    EXPECT_EQ(readAnalyser(0x05), 1U) << "commands are carried out all the same";
    controller.disturb(Disturbance::none);
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x07390000\r\n");
}

TEST_F(SerialControllerTest, CanBeShort) {
    controller.disturb(Disturbance::shortened, 3);
    EXPECT_EQ(ask("r 7 0 24\r\n", 9), "0x0739000");
    controller.disturb(Disturbance::shortened);
    EXPECT_EQ(ask("i 0 2\r\n", 7), "0x0007\r");
    controller.disturb(Disturbance::shortened, 100);
    type("i 0 2\r\n");
    EXPECT_EQ(controller.getSent(), "0x07390000x0007\r");
}

TEST_F(SerialControllerTest, CanBeGarbled) {
    controller.disturb(Disturbance::garbled);
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x????????\r\n");
    EXPECT_EQ(ask("i 0 2\r\n", 8), "0x????\r\n");
}

TEST_F(SerialControllerTest, CanBeTooLong) {
    controller.disturb(Disturbance::lengthened, 3);
    EXPECT_EQ(ask("r 7 0 24\r\n", 15), "0x07390000\r\n+++");
    EXPECT_EQ(ask("i 0 2\r\n", 11), "0x0007\r\n+++");
}

TEST_F(SerialControllerTest, CanAnswerAnything) {
    controller.answerNext("anything");
    EXPECT_EQ(ask("r 7 0 24\r\n", 8), "anything");
    EXPECT_EQ(ask("r 7 0 24\r\n", 12), "0x07390000\r\n");
}

TEST_F(SerialControllerTest, CanBeLate) {
    simulation::VirtualClock clock;
    controller.delayAnswers(clock, 1'000);
    type("r 7 0 24\r\n");
    clock.advanceNanoseconds(400);
    type("i 0 2\r\n");
    clock.advanceNanoseconds(599);
    EXPECT_EQ(controller.getSent(), "");
    clock.advanceNanoseconds(1);
    EXPECT_EQ(answer(12), "0x07390000\r\n");
    clock.advanceNanoseconds(399);
    EXPECT_EQ(controller.getSent(), "0x07390000\r\n");
    clock.advanceNanoseconds(1);
    EXPECT_EQ(answer(8), "0x0007\r\n");
    controller.delayAnswers(clock, 0);
    EXPECT_EQ(ask("i 0 3\r\n", 8), "0x0420\r\n");
}

TEST_F(SerialControllerTest, LateAnswersDoNotKeepTheLine) {
    simulation::VirtualClock clock;
    std::string path;
    {
        SerialController other(*_board);
        other.delayAnswers(clock, 1'000);
        path = other.getDevicePath();
        int const line = open(path.c_str(), O_RDWR | O_NOCTTY);
        EXPECT_EQ(::write(line, "i 0 2\r\n", 7), 7);
        EXPECT_TRUE(other.waitForCommands(1));
        close(line);
        EXPECT_EQ(access(path.c_str(), F_OK), 0);
    }
    EXPECT_NE(access(path.c_str(), F_OK), 0);
    clock.advanceNanoseconds(2'000);
}

} // namespace
