#include <gtest/gtest.h>

#include <optional>

#include "marvell/Arm920tMdioAccess.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/WordScript.hpp"

using namespace std::chrono_literals;
using test_support::Accesses;
using test_support::gets;
using test_support::Lines;
using test_support::MacBench;
using test_support::sets;
using test_support::WordScript;

namespace {

Lines const busyTimeout{"2|Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n"};

/// Offsets: 0x10 command, 0x14 data, 0x18 status (bit 0 busy), 0x20 control.
class MdioAccessTest : public testing::Test {
protected:
    MdioAccessTest() {
        bench.script.expect({gets(0x20, 0x0000'1234), sets(0x20, 0x3E00)});
        mdio.emplace(bench.application, false);
    }
    ~MdioAccessTest() override {
        bench.script.expect({sets(0x20, 0x0000'1234)});
        mdio.reset();
        bench.script.verify();
    }

    void expectRead(unsigned short phy, unsigned short registerNumber, unsigned int command) {
        SCOPED_TRACE("PHY " + std::to_string(phy) + " register " + std::to_string(registerNumber));
        bench.script.expect({gets(0x18, 0), sets(0x10, command), gets(0x18, 0), gets(0x14, 0xABCD)});
        unsigned short value = 0;
        EXPECT_TRUE(mdio->mdioReadRegister(phy, registerNumber, value));
        EXPECT_EQ(value, 0xABCD);
        bench.script.verify();
    }

    void expectWrite(unsigned short phy, unsigned short registerNumber, unsigned int command) {
        SCOPED_TRACE("PHY " + std::to_string(phy) + " register " + std::to_string(registerNumber));
        bench.script.expect({gets(0x18, 0), sets(0x14, 0xBEEF), sets(0x10, command), gets(0x18, 0)});
        EXPECT_TRUE(mdio->mdioWriteRegister(phy, registerNumber, 0xBEEF));
        bench.script.verify();
    }

    MacBench<WordScript> bench;
    std::optional<Arm920tMdioAccess> mdio;
};

TEST_F(MdioAccessTest, ReadsWithOneCommand) {
    expectRead(3, 2, 0x8062);
    expectRead(0, 0, 0x8000);
    expectRead(31, 31, 0x83FF);
    expectRead(1, 0, 0x8020);
    expectRead(16, 1, 0x8201);
}

TEST_F(MdioAccessTest, WritesTheDataBeforeTheCommand) {
    expectWrite(3, 2, 0x4062);
    expectWrite(0, 0, 0x4000);
    expectWrite(31, 31, 0x43FF);
    expectWrite(1, 0, 0x4020);
    expectWrite(16, 1, 0x4201);
}

TEST_F(MdioAccessTest, HighBitsOfARegisterNumberMoveInAReadCommand) {
    expectRead(0, 0x20, 0x8100);
    expectRead(0, 0x40, 0x8200);
    expectRead(0, 0x7F, 0x831F);
    expectRead(0, 0x80, 0x8000);
}

TEST_F(MdioAccessTest, HighBitsOfARegisterNumberAreDroppedInAWriteCommand) {
    expectWrite(0, 0x20, 0x4000);
    expectWrite(0, 0x7F, 0x401F);
    expectWrite(0, 0x80, 0x4000);
}

TEST_F(MdioAccessTest, ThePhyAddressIsNotMasked) {
    expectRead(32, 0, 0x8400);
    expectWrite(32, 0, 0x4400);
    expectRead(0x1FF, 0, 0xBFE0);
    expectWrite(0x1FF, 0, 0x7FE0);
}

TEST_F(MdioAccessTest, TakesTheLowHalfOfTheDataWord) {
    bench.script.expect({gets(0x18, 0), sets(0x10, 0x8062), gets(0x18, 0), gets(0x14, 0x89AB'CDEF)});
    unsigned short value = 0;
    EXPECT_TRUE(mdio->mdioReadRegister(3, 2, value));
    EXPECT_EQ(value, 0xCDEF);
}

TEST_F(MdioAccessTest, OnlyBitZeroOfTheStatusMeansBusy) {
    bench.script.expect({gets(0x18, 0xFFFF'FFFE)});
    EXPECT_FALSE(mdio->isMacBusy());
}

TEST_F(MdioAccessTest, PollsUntilTheMasterIsFree) {
    bench.script.expect({gets(0x18, 1), gets(0x18, 0xFFFF'FFFF), gets(0x18, 1), gets(0x18, 0)});
    EXPECT_FALSE(mdio->isMacBusy());
    EXPECT_EQ(bench.clock.getNanoseconds(), 300'000U) << "three sleeps of 100 microseconds";
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MdioAccessTest, GivesUpAtTheFirstBusyPollAfterAWholeSecond) {
    bench.script.expect(
        {gets(0x18, 1).taking(400ms), gets(0x18, 1).taking(500ms), gets(0x18, 1).taking(200ms)});
    EXPECT_TRUE(mdio->isMacBusy());
    EXPECT_EQ(bench.log.take(), busyTimeout);
}

TEST_F(MdioAccessTest, ASecondIsOverAfterExactlyASecond) {
    bench.script.expect({gets(0x18, 1).taking(999'800us), gets(0x18, 1), gets(0x18, 1)});
    EXPECT_TRUE(mdio->isMacBusy());
    EXPECT_EQ(bench.log.take(), busyTimeout);
}

TEST_F(MdioAccessTest, AMasterThatIsFreeAtTheLastPollIsFree) {
    bench.script.expect({gets(0x18, 1).taking(999'800us), gets(0x18, 1), gets(0x18, 0).taking(5s)});
    EXPECT_FALSE(mdio->isMacBusy());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MdioAccessTest, AChangeOfTheSecondIsNoWholeSecond) {
    bench.clock.advanceNanoseconds(950'000'000);
    bench.script.expect({gets(0x18, 1).taking(100ms), gets(0x18, 0)});
    EXPECT_FALSE(mdio->isMacBusy());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MdioAccessTest, AMasterThatStaysBusyEndsEveryTransferBeforeItsCommand) {
    unsigned short value = 0x5555;
    bench.script.expect({gets(0x18, 1).taking(1s)});
    EXPECT_FALSE(mdio->mdioReadRegister(3, 2, value));
    EXPECT_EQ(value, 0x5555);
    bench.script.expect({gets(0x18, 1).taking(1s)});
    EXPECT_FALSE(mdio->mdioWriteRegister(3, 2, 0xBEEF));
    EXPECT_EQ(bench.log.take(), (Lines{busyTimeout[0], busyTimeout[0]}));
}

TEST_F(MdioAccessTest, AReadCommandThatDoesNotEndFails) {
    unsigned short value = 0x5555;
    bench.script.expect({gets(0x18, 0), sets(0x10, 0x8062), gets(0x18, 1).taking(1s)});
    EXPECT_FALSE(mdio->mdioReadRegister(3, 2, value));
    EXPECT_EQ(value, 0x5555);
    EXPECT_EQ(bench.log.take(), busyTimeout);
}

TEST_F(MdioAccessTest, AWriteCommandThatDoesNotEndFails) {
    bench.script.expect({gets(0x18, 0), sets(0x14, 0xBEEF), sets(0x10, 0x4062), gets(0x18, 1).taking(1s)});
    EXPECT_FALSE(mdio->mdioWriteRegister(3, 2, 0xBEEF));
    EXPECT_EQ(bench.log.take(), busyTimeout);
}

TEST_F(MdioAccessTest, ResultsOfWordAccessesAreNotChecked) {
    bench.script.expect({gets(0x18, 1).failing(), sets(0x10, 0x8062).failing(), gets(0x18, 1).failing(),
                         gets(0x14, 0xABCD).failing()});
    unsigned short value = 0;
    EXPECT_TRUE(mdio->mdioReadRegister(3, 2, value));
    bench.script.expect({gets(0x18, 1).failing(), sets(0x14, 0xBEEF).failing(), sets(0x10, 0x4062).failing(),
                         gets(0x18, 1).failing()});
    EXPECT_TRUE(mdio->mdioWriteRegister(3, 2, 0xBEEF));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST(MdioAccess, TimeDifferenceBorrowsASecond) {
    timespec const elapsed = Arm920tMdioAccess::clock_timediff({1, 900'000'000}, {2, 100'000'000});
    EXPECT_EQ(elapsed.tv_sec, 0);
    EXPECT_EQ(elapsed.tv_nsec, 200'000'000);
    timespec const plain = Arm920tMdioAccess::clock_timediff({1, 100'000'000}, {3, 400'000'000});
    EXPECT_EQ(plain.tv_sec, 2);
    EXPECT_EQ(plain.tv_nsec, 300'000'000);
}

} // namespace
