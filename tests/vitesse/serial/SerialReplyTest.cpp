#include <utility>
#include <vector>

#include "tests/vitesse/serial/SerialBench.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

using serial_test::second;
using serial_test::SerialBench;
using test_support::Lines;
using Controller = VitesseManagementCommunications::MiiManagementLocation;

namespace {

/// Answers of all kinds.
class SerialReplyTest : public SerialBench {
protected:
    static constexpr unsigned int untouched = 0xA5A5A5A5;
    static constexpr unsigned short untouchedPhy = 0x5A5A;

    bool readRegister() { return communications.readRegister({2, 0, 5}, value); }
    bool readPhy() { return communications.phyReadRegister(Controller::controller1, 3, 0, phyValue); }

    VitesseSerialCommunications communications{application, false, device()};
    unsigned int value = untouched;
    unsigned short phyValue = untouchedPhy;
};

TEST_F(SerialReplyTest, OfARegisterIsHexadecimalAfterTwoCharacters) {
    std::vector<std::pair<std::string, unsigned int>> const replies = {
        {"0x12345678\r\n", 0x12345678}, {"0xabcdefAB\r\n", 0xABCDEFAB}, {"  00000001\r\n", 1},
        {"FF80000000\r\n", 0x80000000}, {"r=42\r\n\r\n\r\n\r\n", 0x42}, {"> 7390 0018\r", 0x7390},
    };
    for (auto const& [reply, expected] : replies) {
        send(reply);
        value = untouched;
        EXPECT_TRUE(readRegister()) << reply;
        EXPECT_EQ(value, expected) << reply;
    }
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialReplyTest, OfAPhyIsHexadecimalAfterTwoCharacters) {
    std::vector<std::pair<std::string, unsigned short>> const replies = {
        {"0x1140\r\n", 0x1140},
        {"0xFfFf\r\n", 0xFFFF},
        {"110007\r\n", 0x0007},
        {"p:9\r\n\r\n\r", 9},
    };
    for (auto const& [reply, expected] : replies) {
        send(reply);
        phyValue = untouchedPhy;
        EXPECT_TRUE(readPhy()) << reply;
        EXPECT_EQ(phyValue, expected) << reply;
    }
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialReplyTest, WithoutDigitsGivesZeroAndSuccess) {
    for (char const* const reply : {"0xno number\n", "ERROR error\n", "0x\r\n\r\n\r\n\r\n\r\n",
                                    "0x  00002A\r\n", "0x-0000001\r\n", "0x+0000001\r\n"}) {
        send(reply);
        value = untouched;
        EXPECT_TRUE(readRegister()) << reply;
        EXPECT_EQ(value, 0U) << reply;
    }
    send("0x????\r\n");
    EXPECT_TRUE(readPhy());
    EXPECT_EQ(phyValue, 0);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialReplyTest, WithMoreThanEightDigitsKeepsTheLow32Bits) {
    send("0x1234567890");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0x34567890U);
    send("0xFFFFFFFFFF");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0xFFFFFFFFU);
}

TEST_F(SerialReplyTest, OfAPhyWithMoreThanFourDigitsKeepsTheLow16Bits) {
    send("0x123456");
    EXPECT_TRUE(readPhy());
    EXPECT_EQ(phyValue, 0x3456);
}

TEST_F(SerialReplyTest, OfNothingIsReportedAfterTheTimeOut) {
    simulateTime();
    EXPECT_FALSE(readRegister());
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(
        log.lines(),
        Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 0 \n", "error|"}));
    EXPECT_EQ(clock.getNanoseconds(), 6 * second);
    EXPECT_EQ(written(9), "r 2 0 5\r\n");
}

TEST_F(SerialReplyTest, ThatIsShortIsReportedWithWhatCame) {
    simulateTime();
    send("0x1234567\r\n");
    EXPECT_FALSE(readRegister());
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(log.lines(),
              Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 11 \n",
                     "error|0x1234567\r\n"}));
}

TEST_F(SerialReplyTest, IsReportedAsItIs) {
    simulateTime();
    send("100%d %s%n");
    EXPECT_FALSE(readRegister());
    EXPECT_EQ(log.lines(),
              Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 10 \n",
                     "error|100%d %s%n"}));
}

// The line of a register read is the one that has its own name; a PHY's counts against 8 and says 12.
TEST_F(SerialReplyTest, OfAPhyThatIsShortIsReportedWithTwelve) {
    simulateTime();
    send("0x140\r\n");
    EXPECT_FALSE(readPhy());
    EXPECT_EQ(phyValue, untouchedPhy);
    EXPECT_EQ(log.lines(),
              Lines({"error|VitesseSwitch::ReadRegister ERROR expected: 12 Got: 7 \n", "error|0x140\r\n"}));
}

TEST_F(SerialReplyTest, OfAPhyThatIsMissingIsReportedWithTwelve) {
    simulateTime();
    EXPECT_FALSE(readPhy());
    EXPECT_EQ(log.lines(),
              Lines({"error|VitesseSwitch::ReadRegister ERROR expected: 12 Got: 0 \n", "error|"}));
}

TEST_F(SerialReplyTest, ThatGrowsTooLongIsReported) {
    simulateTime();
    send("0x1234");
    sendAt(second, "5678\r\n+");
    EXPECT_FALSE(readRegister());
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(log.take(),
              Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 13 \n",
                     "error|0x12345678\r\n+"}));
    send("0x11");
    sendAt(clock.getNanoseconds() + second, "40\r\n\r\n\r\n");
    EXPECT_FALSE(readPhy());
    EXPECT_EQ(phyValue, untouchedPhy);
    EXPECT_EQ(log.take(), Lines({"error|VitesseSwitch::ReadRegister ERROR expected: 12 Got: 12 \n",
                                 "error|0x1140\r\n\r\n\r\n"}));
}

// What is too much stays on the line and comes before the next answer.
TEST_F(SerialReplyTest, ThatIsTooLongAtOnceSpoilsTheNext) {
    send("0x12345678\r\n+");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0x12345678U);
    send("+0x00000001\r\n");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0U) << "the two characters that are left out are not the prefix";
}

TEST_F(SerialReplyTest, MayComeLate) {
    simulateTime();
    sendAt(5 * second, "0x12345678\r\n");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0x12345678U);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(SerialReplyTest, ThatComesTooLateAnswersTheNextRead) {
    simulateTime();
    EXPECT_FALSE(readRegister());
    log.take();
    send("0x12345678\r\n");
    EXPECT_TRUE(readRegister());
    EXPECT_EQ(value, 0x12345678U);
}

TEST_F(SerialReplyTest, WithoutALineIsMissing) {
    VitesseSerialCommunications closed(application, false, "/nonexistent/ttyS7");
    log.take();
    simulateTime();
    EXPECT_FALSE(closed.readRegister({2, 0, 5}, value));
    EXPECT_EQ(
        log.lines(),
        Lines({"error|VitesseSerialCommunications::ReadRegister ERROR expected: 12 Got: 0 \n", "error|"}));
}

} // namespace
