#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

using Options = simulation::Marvell88E6096Options;

class PhyTest : public BoardFixture {};

TEST_F(PhyTest, WriteWithModeBitClearAndReadWithItSet) {
    write(global2, 0x19, 0x2100);
    write(global2, 0x18, 0x8460);
    EXPECT_EQ(chip().peek("phy 3", 0), 0x2100U);
    write(global2, 0x18, 0x9860);
    EXPECT_EQ(read(global2, 0x18), 0x1860U);
    EXPECT_EQ(read(global2, 0x19), 0x2100U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(PhyTest, WritesThatFollowEachOtherWithoutAPollAllCount) {
    phyWrite(1, 0, 0x2000);
    phyWrite(1, 16, 0x0010);
    phyWrite(2, 0, 0x0100);
    EXPECT_EQ(chip().peek("phy 1", 0), 0x2000U);
    EXPECT_EQ(chip().peek("phy 1", 16), 0x0010U);
    EXPECT_EQ(chip().peek("phy 2", 0), 0x0100U);
}

TEST_F(PhyTest, WordsThatStartNothing) {
    write(global2, 0x19, 0x2100);
    // Busy clear; operations 00 and 11.
    write(global2, 0x18, 0x0460);
    write(global2, 0x18, 0x8060);
    write(global2, 0x18, 0x8C60);
    EXPECT_EQ(chip().peek("phy 3", 0), 0x3100U);
    EXPECT_EQ(read(global2, 0x19), 0x2100U);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 2U);
}

TEST_F(PhyTest, ResetClearsItselfAndKeepsTheRest) {
    phyWrite(4, 0, 0xAD40);
    EXPECT_EQ(phyRead(4, 0), 0x2D40U);
    EXPECT_FALSE(chip().hasLink(4));
}

TEST_F(PhyTest, ResetMayRestoreDefaults) {
    Options options;
    options.phyReset = Options::PhyReset::restoresDefaults;
    rebuild(options);
    phyWrite(4, 16, 0x0010);
    phyWrite(4, 0, 0x0840);
    phyWrite(4, 0, 0x8840);
    EXPECT_EQ(phyRead(4, 0), 0x3100U);
    EXPECT_EQ(phyRead(4, 16), 0x0030U);
}

TEST_F(PhyTest, RestartOfNegotiationClearsItself) {
    phyWrite(4, 0, 0x3300);
    EXPECT_EQ(phyRead(4, 0), 0x3100U);
}

TEST_F(PhyTest, AllMdiModesAreStored) {
    for (unsigned mode = 0; mode < 4; ++mode) {
        phyWrite(5, 16, mode << 4);
        EXPECT_EQ(phyRead(5, 16), mode << 4);
    }
}

TEST_F(PhyTest, IdentifiersCannotBeWritten) {
    phyWrite(5, 2, 0xFFFF);
    phyWrite(5, 3, 0xFFFF);
    EXPECT_EQ(phyRead(5, 2), 0x0141U);
    EXPECT_EQ(phyRead(5, 3), 0x0C80U);
}

TEST_F(PhyTest, AbsentPhysReadOnesAndCompleteAllTheSame) {
    for (unsigned phy : {8U, 9U, 10U, 31U}) {
        phyWrite(phy, 0, 0x2100);
        EXPECT_EQ(phyRead(phy, 0), 0xFFFFU) << phy;
    }
    EXPECT_THROW(chip().peek("phy 8", 0), std::out_of_range);
    EXPECT_EQ(misuseText(), "");
}

// Registers 1, 5, 6 and 17, as a driver reads them that looks for link, speed and duplex.
TEST_F(PhyTest, StatusShowsTheLink) {
    struct Row {
        unsigned megabits;
        bool fullDuplex;
        unsigned partner;
        unsigned specific;
    };
    for (Row const& row : {Row{10, false, 0x4021, 0x0C00}, Row{10, true, 0x4061, 0x2C00},
                           Row{100, false, 0x40E1, 0x4C00}, Row{100, true, 0x41E1, 0x6C00}}) {
        EXPECT_EQ(phyRead(3, 1), 0x7849U);
        EXPECT_EQ(phyRead(3, 5), 0U);
        EXPECT_EQ(phyRead(3, 6), 0U);
        EXPECT_EQ(phyRead(3, 17), 0U);
        chip().plugLink(3, row.megabits, row.fullDuplex);
        EXPECT_EQ(phyRead(3, 1), 0x786DU);
        EXPECT_EQ(phyRead(3, 5), row.partner);
        EXPECT_EQ(phyRead(3, 6), 1U);
        EXPECT_EQ(phyRead(3, 17), row.specific);
        EXPECT_EQ(phyRead(2, 1), 0x7849U);
        chip().unplugLink(3);
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(PhyTest, WithoutNegotiationThePartnerOffersNothing) {
    chip().plugLink(3);
    phyWrite(3, 0, 0x2100);
    EXPECT_EQ(phyRead(3, 1), 0x784DU);
    EXPECT_EQ(phyRead(3, 5), 0U);
    EXPECT_EQ(phyRead(3, 6), 0U);
    EXPECT_EQ(phyRead(3, 17), 0x6C00U);
}

TEST_F(PhyTest, WhatThePhyOffersIsKept) {
    EXPECT_EQ(phyRead(3, 4), 0x01E1U);
    phyWrite(3, 4, 0x0061);
    EXPECT_EQ(phyRead(3, 4), 0x0061U);
}

TEST_F(PhyTest, UnlistedRegistersArePlainStorage) {
    phyWrite(0, 9, 0x1234);
    EXPECT_EQ(phyRead(0, 9), 0x1234U);
    EXPECT_EQ(phyRead(1, 9), 0U);
}

} // namespace
