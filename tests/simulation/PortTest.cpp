#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class PortTest : public BoardFixture {
protected:
    unsigned status(unsigned port) { return read(port0 + port, 0x00); }
};

TEST_F(PortTest, OnlyPhyDetectOfTheStatusCanBeWritten) {
    write(port0 + 1, 0x00, 0xEFFF);
    EXPECT_EQ(status(1), 0x0000U);
    write(port0 + 1, 0x00, 0x1000);
    EXPECT_EQ(status(1), 0x1000U);
    write(port0 + 9, 0x00, 0x1000);
    EXPECT_EQ(status(9), 0x1000U);
}

TEST_F(PortTest, IdentifierCannotBeWritten) {
    write(port0, 0x03, 0xFFFF);
    EXPECT_EQ(read(port0, 0x03), 0x0980U);
}

TEST_F(PortTest, LinkThroughThePhy) {
    EXPECT_FALSE(chip().hasLink(2));
    chip().plugLink(2, 100, true);
    EXPECT_TRUE(chip().hasLink(2));
    EXPECT_EQ(status(2), 0x1D00U);
    chip().plugLink(2, 10, false);
    EXPECT_EQ(status(2), 0x1800U);
    chip().unplugLink(2);
    EXPECT_EQ(status(2), 0x1000U);
}

TEST_F(PortTest, APoweredDownPhyHasNoLink) {
    chip().plugLink(2);
    phyWrite(2, 0, 0x3900);
    EXPECT_FALSE(chip().hasLink(2));
    EXPECT_EQ(status(2), 0x1000U);
    phyWrite(2, 0, 0x3100);
    EXPECT_EQ(status(2), 0x1D00U);
}

TEST_F(PortTest, APhyWithoutNegotiationRunsAsItIsSet) {
    chip().plugLink(2, 100, true);
    phyWrite(2, 0, 0x0000);
    EXPECT_EQ(status(2), 0x1800U);
    phyWrite(2, 0, 0x2100);
    EXPECT_EQ(status(2), 0x1D00U);
    // Both speed bits count as 1000 Mbit/s.
    phyWrite(2, 0, 0x2140);
    EXPECT_EQ(status(2), 0x1E00U);
}

TEST_F(PortTest, WithoutPhyDetectTheLevelCounts) {
    chip().plugLink(2);
    write(port0 + 2, 0x00, 0x0000);
    EXPECT_FALSE(chip().hasLink(2));
    chip().setLinkLevel(2, true);
    EXPECT_TRUE(chip().hasLink(2));
    EXPECT_EQ(status(2), 0x0D00U);
}

TEST_F(PortTest, AGigabitPortHasItsLevel) {
    chip().plugLink(9, 1000, true);
    EXPECT_EQ(status(9), 0x0E00U);
    chip().unplugLink(9);
    EXPECT_EQ(status(9), 0x0000U);
}

TEST_F(PortTest, ForcedValuesOverride) {
    chip().plugLink(2, 100, true);
    // Link forced down.
    write(port0 + 2, 0x01, 0x0013);
    EXPECT_FALSE(chip().hasLink(2));
    // Link forced up, half duplex, 10 Mbit/s.
    write(port0 + 2, 0x01, 0x0034);
    EXPECT_EQ(status(2), 0x1800U);
    // Full duplex and 1000 Mbit/s forced, link as polled.
    chip().unplugLink(2);
    write(port0 + 2, 0x01, 0x000E);
    EXPECT_EQ(status(2), 0x1600U);
    // 100 Mbit/s.
    write(port0 + 2, 0x01, 0x0031);
    EXPECT_EQ(status(2), 0x1900U);
}

TEST_F(PortTest, FrameCountersArePresetAndReadOnly) {
    chip().poke("port 6", 0x10, 0x5678);
    chip().poke("port 6", 0x11, 0x1234);
    chip().poke("port 6", 0x12, 0x9ABC);
    chip().poke("port 6", 0x13, 0xDEF0);
    write(port0 + 6, 0x10, 0xFFFF);
    EXPECT_EQ(read(port0 + 6, 0x10), 0x5678U);
    EXPECT_EQ(read(port0 + 6, 0x11), 0x1234U);
    EXPECT_EQ(read(port0 + 6, 0x12), 0x9ABCU);
    EXPECT_EQ(read(port0 + 6, 0x13), 0xDEF0U);
    EXPECT_EQ(read(port0 + 5, 0x10), 0U);
}

TEST_F(PortTest, PortsThatNobodySetsKeepTheirState) {
    write(port0 + 1, 0x04, 0x007C);
    EXPECT_EQ(read(port0 + 0, 0x04) & 3U, 3U);
    EXPECT_EQ(read(port0 + 2, 0x04) & 3U, 3U);
}

TEST_F(PortTest, NumbersThatDoNotExist) {
    EXPECT_THROW(chip().plugLink(11), std::out_of_range);
    EXPECT_THROW(chip().unplugLink(11), std::out_of_range);
    EXPECT_THROW(chip().getUnit(simulation::UnitKind::port, 11), std::out_of_range);
    EXPECT_THROW(chip().hasLink(11), std::out_of_range);
}

} // namespace
