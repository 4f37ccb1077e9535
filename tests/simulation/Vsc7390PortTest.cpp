#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390PortTest : public Vsc7390Fixture {};

TEST_F(Vsc7390PortTest, TheSequenceOfALinkSettingIsStored) {
    for (unsigned word : {0x2000083CU, 0x2000083EU, 0x20000C7EU, 0x20040C7EU, 0x281C0C7EU, 0x201C0C7EU,
                          0x001C0442U, 0x001D0442U, 0x101D0442U}) {
        writePort(3, 0x00, word);
        EXPECT_EQ(readPort(3, 0x00), word);
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390PortTest, TheMacIsUpWhenNothingHoldsIt) {
    EXPECT_FALSE(chip().getPortMac(3).receives);
    EXPECT_FALSE(chip().getPortMac(3).sends);
    writePort(3, 0x00, 0x101D0442);
    TestSide::PortMac const up = chip().getPortMac(3);
    EXPECT_TRUE(up.receives);
    EXPECT_TRUE(up.sends);
    EXPECT_EQ(up.megabits, 100U);
    EXPECT_TRUE(up.fullDuplex);
    writePort(3, 0x00, 0x101D0442 | 0x20000000);
    EXPECT_FALSE(chip().getPortMac(3).receives);
    EXPECT_FALSE(chip().getPortMac(3).sends);
    writePort(3, 0x00, 0x101D0462);
    EXPECT_FALSE(chip().getPortMac(3).receives);
    EXPECT_TRUE(chip().getPortMac(3).sends);
    writePort(3, 0x00, 0x101D0452);
    EXPECT_TRUE(chip().getPortMac(3).receives);
    EXPECT_FALSE(chip().getPortMac(3).sends);
}

TEST_F(Vsc7390PortTest, TheClockIsTheSpeed) {
    unsigned const megabits[] = {0, 1000, 100, 10};
    for (unsigned clock = 0; clock < 4; ++clock) {
        writePort(20, 0x00, clock);
        EXPECT_EQ(chip().getPortMac(20).megabits, megabits[clock]) << clock;
        EXPECT_FALSE(chip().getPortMac(20).fullDuplex);
    }
}

TEST_F(Vsc7390PortTest, WhatIsWrittenIsReadBack) {
    struct Case {
        unsigned address;
        unsigned value;
    };
    for (Case const& item :
         {Case{0x04, 0x000300FF}, Case{0x08, 0xFFFFFFFF}, Case{0x0C, 0xFFFFFFFF}, Case{0x10, 9600},
          Case{0x24, 0x001EFFFB}, Case{0x6E, 0x0000005F}, Case{0x79, 0x00000180}, Case{0x7A, 0x0000FFFF},
          Case{0xDE, 0xFFFFFFFF}, Case{0xDF, 0xFFFFFFFF}, Case{0xE0, 0xFFFFFFFF}, Case{0x00, 0xBFFFEFFF},
          Case{0x02, 0xFFFFFFFF}, Case{0x19, 0xFFFFFFFF}, Case{0x28, 0xFFFFFFFF}, Case{0x6F, 0xFFFFFFFF},
          Case{0x75, 0xFFFFFFFF}}) {
        writePort(7, item.address, item.value);
        EXPECT_EQ(readPort(7, item.address), item.value) << item.address;
        writePort(7, item.address, 0);
        EXPECT_EQ(readPort(7, item.address), 0U) << item.address;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390PortTest, AnUnknownRegisterIsStorage) {
    writePort(7, 0x40, 0xDEADBEEF);
    EXPECT_EQ(readPort(7, 0x40), 0xDEADBEEFU);
    EXPECT_EQ(readPort(8, 0x40), 0U);
}

TEST_F(Vsc7390PortTest, CountersAreReadWithoutBeingCleared) {
    for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
        chip().setCounter(22, counter, 0xFFFFFF00 + counter);
    }
    for (int pass = 0; pass < 2; ++pass) {
        for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
            EXPECT_EQ(readPort(22, counter), 0xFFFFFF00 + counter);
        }
    }
    EXPECT_EQ(readPort(21, 0x50), 0U);
}

TEST_F(Vsc7390PortTest, AWriteOfZeroToThePacketsClearsAllTwelve) {
    for (unsigned port : {4U, 5U}) {
        for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
            chip().setCounter(port, counter, counter);
        }
    }
    writePort(4, 0x52, 0);
    for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
        EXPECT_EQ(readPort(4, counter), 0U) << counter;
        EXPECT_EQ(chip().getCounter(4, counter), 0U) << counter;
        EXPECT_EQ(chip().getCounter(5, counter), counter) << counter;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390PortTest, OtherWritesToCountersDoNothing) {
    chip().setCounter(4, 0x50, 80);
    chip().setCounter(4, 0x52, 5);
    writePort(4, 0x50, 0);
    writePort(4, 0x52, 8);
    EXPECT_EQ(chip().getCounter(4, 0x50), 80U);
    EXPECT_EQ(chip().getCounter(4, 0x52), 5U);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
}

TEST_F(Vsc7390PortTest, NumbersThatDoNotExist) {
    EXPECT_THROW(chip().setCounter(24, 0x50, 0), std::out_of_range);
    EXPECT_THROW(chip().setCounter(0, 0x4F, 0), std::out_of_range);
    EXPECT_THROW(chip().getCounter(0, 0x5C), std::out_of_range);
    EXPECT_THROW(chip().getPortMac(24), std::out_of_range);
    EXPECT_THROW(chip().queueFrames(24), std::out_of_range);
}

} // namespace
