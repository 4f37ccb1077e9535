// Where an 88E6096 answers by its straps, and a data line that nobody gets to move.

#include "simulation/MdioBus.hpp"
#include "tests/simulation/BoardFixture.hpp"

namespace {

constexpr unsigned idle = 0xFFFF;
constexpr unsigned identifier = 0x0980;

} // namespace

using StrapTest = simulation_test::BoardFixture;

TEST_F(StrapTest, AChipMovesToAnotherAddress) {
    chip().moveTo(9);
    EXPECT_EQ(mdioRead(chipAddress, 0), idle);
    EXPECT_EQ(mdioRead(9, 0), 0U);
    mdioWrite(9, 0, 0x9800 | port0 << 5 | 3);
    EXPECT_EQ(mdioRead(9, 1), identifier);
    EXPECT_THROW(chip().moveTo(9), std::out_of_range);
    EXPECT_THROW(chip().moveTo(32), std::out_of_range);
}

TEST_F(StrapTest, InSingleChipModeUnitsAnswerThemselves) {
    chip().strapSingleChip();
    EXPECT_EQ(mdioRead(port0, 3), identifier);
    EXPECT_EQ(mdioRead(port0 + 10, 3), identifier);
    EXPECT_EQ(mdioRead(7, 2), 0x0141U);
    EXPECT_EQ(mdioRead(8, 2), idle);
    mdioWrite(port0 + 1, 7, 0x0005);
    EXPECT_EQ(chip().peek("port 1", 7), 0x0005U);
    // That of a PHY now, which the chip's own address was before.
    EXPECT_EQ(mdioRead(chipAddress, 2), 0x0141U);
}

TEST_F(StrapTest, AHeldLineGivesOneValueAndTakesNone) {
    _board->getMdio().holdLine(0);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0U);
    EXPECT_EQ(mdioRead(chipAddress + 1, 0), 0U);
    mdioWrite(chipAddress, 0, 0x9800 | port0 << 5 | 3);
    EXPECT_EQ(log().getSize(), 0U);
    _board->getMdio().holdLine(idle);
    EXPECT_EQ(mdioRead(chipAddress, 0), idle);
}
