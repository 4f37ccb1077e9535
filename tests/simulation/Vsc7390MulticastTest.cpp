#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

/// 239.129.1.2, and an address of one of its members.
constexpr std::uint64_t group = 0x01005E010102;
constexpr std::uint64_t sender = 0x020000000001;

/// WRITE_ENTRY of a valid, locked, aged entry that goes past the VLAN mask.
constexpr unsigned writeGroup = 0x1E07;

class Vsc7390MulticastTest : public Vsc7390Fixture {};

TEST_F(Vsc7390MulticastTest, PortsZeroNineTwenty) {
    writeMac(0x00CA, 0x00011002, 0x01010102, writeGroup);
    auto const entry = chip().getMacEntry(0x0CA, 0);
    ASSERT_TRUE(entry.has_value());
    EXPECT_TRUE(entry->isMulticast());
    EXPECT_TRUE(entry->ignoreVlan);
    EXPECT_EQ(entry->vid, 1U);
    EXPECT_EQ(entry->destination, 0U);
    EXPECT_EQ(entry->getPorts(), 0x100201U);
    EXPECT_EQ(entry->getGroup(), 0x010102U);
    EXPECT_EQ(readMac(0x00CA), 0x1E00U);
    EXPECT_EQ(readAnalyser(0x06), 0x00011002U);
    EXPECT_EQ(readAnalyser(0x07), 0x01010102U);
}

TEST_F(Vsc7390MulticastTest, FramesMeetTheGroupInAnyBucketOfItsRow) {
    for (unsigned index : {0x00CAU, 0x08CAU, 0x10CAU, 0x18CAU}) {
        chip().removeMacEntry(0x0CA, 0);
        chip().removeMacEntry(0x0CA, 1);
        chip().removeMacEntry(0x0CA, 2);
        EXPECT_EQ(chip().getMulticastPorts(group, 1), std::nullopt) << index;
        writeMac(index, 0x00011002, 0x01010102, writeGroup);
        EXPECT_EQ(chip().getMulticastPorts(group, 1), 0x100201U) << index;
    }
}

TEST_F(Vsc7390MulticastTest, FramesOfOtherGroupsAndVlansDoNot) {
    writeMac(0x00CA, 0x00011002, 0x01010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 65), std::nullopt) << "the same row, another VLAN";
    EXPECT_EQ(chip().getMulticastPorts(group + 0x800000, 1), std::nullopt);
    EXPECT_EQ(chip().getMulticastPorts(0x03005E010102, 1), std::nullopt);
}

TEST_F(Vsc7390MulticastTest, LowBytesAloneCanDecide) {
    Options options;
    options.multicastMatch = Options::MulticastMatch::lowBytes;
    rebuild(options);
    writeMac(0x00CA, 0x00011002, 0x01010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 65), 0x100201U);
    EXPECT_EQ(chip().getMulticastPorts(group, 2), std::nullopt) << "another row";
}

TEST_F(Vsc7390MulticastTest, OnlyLockedAndAgedTogetherMakeAGroup) {
    for (unsigned word : {writeGroup & ~0x200U, writeGroup & ~0x800U}) {
        writeMac(0x00CA, 0x00011002, 0x01010102, word);
        EXPECT_EQ(chip().getMulticastPorts(group, 1), std::nullopt) << word;
    }
}

TEST_F(Vsc7390MulticastTest, AgeingLeavesGroupsAlone) {
    writeMac(0x00CA, 0x00011002, 0x01010102, writeGroup);
    for (int pass = 0; pass < 3; ++pass) {
        commandMac(3);
        advance(50'000);
    }
    EXPECT_EQ(chip().getMulticastPorts(group, 1), 0x100201U);
}

TEST_F(Vsc7390MulticastTest, AGroupWithoutPortsBlocks) {
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0x01FFFFEFU) << "flooded";
    writeMac(0x00CA, 0x00010000, 0x00010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 1), 0U);
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0U);
}

TEST_F(Vsc7390MulticastTest, GroupsGoPastTheVlanMaskButNotPastTheOthers) {
    writeMac(0x00CA, 0x00011002, 0x01010102, writeGroup);
    writeVlan(1, 0x10000044);
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0x100201U);
    writeAnalyser(0x84, 0x000001FF);
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0x000001U);
    writeAnalyser(0x84, 0x01FFFFEF);
    for (unsigned code = 0; code < 16; ++code) {
        writeAnalyser(0x30 + code, 0x01EFFFFF);
    }
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0x000201U);
}

TEST_F(Vsc7390MulticastTest, AGroupThatDoesNotIgnoreVlansIsLimitedByThem) {
    writeMac(0x00CA, 0x00011002, 0x01010102, 0x0E07);
    writeVlan(1, 0x00000840);
    EXPECT_EQ(chip().getEgressPorts(4, group, sender, 1), 0x000200U);
}

// A driver that looks for a group by its low bytes finds a station instead.
TEST_F(Vsc7390MulticastTest, AStationCanLookLikeAGroup) {
    // Bits 29 and 40 fall on bit 7 of the row: 00:00:7E:01:01:02 is in the group's row, too.
    std::uint64_t const station = 0x00007E010102;
    ASSERT_EQ(chip().getRow(station, 1), 0x0CAU);
    ASSERT_TRUE(chip().learn(station, 1, 6));
    EXPECT_EQ(readMac(0x00CA), 0x400U | 6U << 3);
    EXPECT_EQ(readAnalyser(0x07) & 0xFFFFFF, 0x010102U);
    EXPECT_EQ(chip().getMulticastPorts(group, 1), std::nullopt);
}

TEST_F(Vsc7390MulticastTest, VlansEqualModulo64ShareARow) {
    writeMac(0x007A, 0x000A1002, 0x01010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 10), 0x100201U);
    readMac(0x007A);
    EXPECT_EQ(readAnalyser(0x07), 0x01010102U) << "what a search for VLAN 74 meets in its row";
    writeMac(0x007A, 0x004A0000, 0x04010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 10), std::nullopt);
    EXPECT_EQ(chip().getMulticastPorts(group, 74), 0x000004U);
}

TEST_F(Vsc7390MulticastTest, AGroupTakesTheLastBucketOfARowThatStationsFill) {
    // 00:00:00:00:00:DA in VLAN 1, and others whose bits eleven apart fall on each other.
    for (std::uint64_t const station : {0x0DA, 0x0DA ^ 0x0801, 0x0DA ^ 0x1002, 0x0DA ^ 0x2004}) {
        ASSERT_TRUE(chip().learn(station, 1, 6));
    }
    ASSERT_TRUE(chip().getMacEntry(0x0CA, 3).has_value());
    writeMac(0x18CA, 0x00010000, 0x40010102, writeGroup);
    EXPECT_EQ(chip().getMulticastPorts(group, 1), 0x000040U);
    EXPECT_EQ(chip().getMacEntry(0x0CA, 2)->mac, 0x0DAU ^ 0x1002U);
    EXPECT_EQ(chip().getMacTable().size(), 4U);
}

} // namespace
