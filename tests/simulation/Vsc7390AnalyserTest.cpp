#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

/// Two stations and the address of all; in VLAN 1, 00:00:00:00:00:05 is where port 7 has it.
constexpr std::uint64_t station = 0x000000000005;
constexpr std::uint64_t source = 0x020000000001;
constexpr std::uint64_t broadcast = 0xFFFFFFFFFFFF;

class Vsc7390AnalyserTest : public Vsc7390Fixture {
protected:
    std::uint32_t toStation(unsigned ingress, unsigned vid = 1) {
        return chip().getEgressPorts(ingress, station, source, vid);
    }

    std::uint32_t toAll(unsigned ingress, unsigned vid = 1) {
        return chip().getEgressPorts(ingress, broadcast, source, vid);
    }
};

TEST_F(Vsc7390AnalyserTest, MasksAreStored) {
    for (unsigned address : {0x04U, 0x05U, 0x0DU, 0x0EU, 0x0FU, 0x10U, 0x30U, 0x3FU, 0x40U, 0x57U, 0x7FU}) {
        writeAnalyser(address, 0x0155AA55);
        EXPECT_EQ(readAnalyser(address), 0x0155AA55U) << address;
        writeAnalyser(address, 0);
        EXPECT_EQ(readAnalyser(address), 0U) << address;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390AnalyserTest, SourceMasksAreStoredWithTheBitsAbove) {
    for (unsigned address = 0x80; address < 0xA0; ++address) {
        writeAnalyser(address, 0xFFFFFFFF);
        EXPECT_EQ(readAnalyser(address), 0xFFFFFFFFU) << address;
        writeAnalyser(address, 0);
        EXPECT_EQ(readAnalyser(address), 0U) << address;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390AnalyserTest, WhatFollowsTheSourceMasksIsNoneOfThem) {
    writeAnalyser(0xA0, 0x00010000);
    EXPECT_EQ(readAnalyser(0xA0), 0x00010000U);
    EXPECT_EQ(readAnalyser(0x9F), 0U);
}

TEST_F(Vsc7390AnalyserTest, OtherRegistersAreStored) {
    writeAnalyser(0x03, 0x02000000);
    writeAnalyser(0x20, 4);
    writeAnalyser(0xC0, 0x3FFF);
    writeAnalyser(0xE0, 0xFFF);
    for (unsigned address : {0x02U, 0x08U, 0x09U, 0x0AU, 0x0BU, 0x0CU, 0xF0U}) {
        writeAnalyser(address, 0xFFFF0000 + address);
        EXPECT_EQ(readAnalyser(address), 0xFFFF0000 + address);
    }
    EXPECT_EQ(readAnalyser(0x03), 0x02000000U);
    EXPECT_EQ(readAnalyser(0x20), 4U);
    EXPECT_EQ(readAnalyser(0xC0), 0x3FFFU);
    EXPECT_EQ(readAnalyser(0xE0), 0xFFFU);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390AnalyserTest, AnOpenChipFloodsToAllButTheOwnPort) {
    EXPECT_EQ(toStation(0), 0x01FFFFFEU);
    EXPECT_EQ(toAll(23), 0x017FFFFFU);
}

TEST_F(Vsc7390AnalyserTest, OnlyTheSourceMaskKeepsFramesFromTheirOwnPort) {
    writeAnalyser(0x87, 0x01FFFFFF);
    EXPECT_EQ(toAll(7), 0x01FFFFFFU);
}

TEST_F(Vsc7390AnalyserTest, FloodMasks) {
    writeAnalyser(0x0E, 0x000F);
    writeAnalyser(0x0F, 0x00F0);
    writeAnalyser(0x04, 0x0F00);
    EXPECT_EQ(toStation(16), 0x000FU);
    EXPECT_EQ(toAll(16), 0x00F0U);
    EXPECT_EQ(chip().getEgressPorts(16, 0x030000000009, source, 1), 0x00F0U);
    EXPECT_EQ(chip().getEgressPorts(16, 0x01005E010102, source, 1), 0x0F00U);
}

TEST_F(Vsc7390AnalyserTest, BroadcastsCanFollowTheUnicastMask) {
    Options options;
    options.broadcastFlood = Options::BroadcastFlood::unicastMask;
    rebuild(options);
    writeAnalyser(0x0E, 0x000F);
    EXPECT_EQ(toAll(16), 0x000FU);
}

TEST_F(Vsc7390AnalyserTest, ALearnedAddressLeadsToItsPort) {
    chip().learn(station, 1, 7);
    EXPECT_EQ(toStation(0), 0x80U);
    EXPECT_EQ(toStation(0, 2), 0x01FFFFFEU) << "unknown in another VLAN";
    writeAnalyser(0x47, 0x0C0);
    EXPECT_EQ(toStation(0), 0xC0U);
    EXPECT_EQ(toStation(6), 0x80U);
}

TEST_F(Vsc7390AnalyserTest, AnEntryCanIgnoreTheVlan) {
    TestSide::MacEntry entry;
    entry.mac = station;
    entry.vid = 1;
    entry.destination = 7;
    chip().setMacEntry(0x015, 0, entry);
    chip().setVlanEntry(1, {0x3, false, false, false});
    EXPECT_EQ(toStation(0), 0U);
    entry.ignoreVlan = true;
    chip().setMacEntry(0x015, 0, entry);
    EXPECT_EQ(toStation(0), 0x80U);
}

TEST_F(Vsc7390AnalyserTest, PortsThatAreNotToReceive) {
    writeAnalyser(0x10, 0x01FFFFFE);
    EXPECT_EQ(toAll(0), 0U);
    EXPECT_EQ(toAll(1), 0x01FFFFFDU);
}

TEST_F(Vsc7390AnalyserTest, AWrittenVlanFiltersAtIngressAndEgress) {
    writeVlan(10, 0x1000001C);
    EXPECT_EQ(toAll(0, 10), 0x6U);
    EXPECT_EQ(toAll(3, 10), 0U) << "not a member";
    EXPECT_EQ(toAll(3, 11), 0x01FFFFF7U) << "a VID that was never written";
    writeVlan(10, 0x0000001C);
    EXPECT_EQ(toAll(3, 10), 0x7U) << "no check of the source";
    writeAnalyser(0x05, 0x8);
    EXPECT_EQ(toAll(3, 10), 0U) << "the port is checked";
    EXPECT_EQ(toAll(4, 10), 0x7U);
}

TEST_F(Vsc7390AnalyserTest, WithoutSourceMasksNothingPasses) {
    clearVlans();
    for (unsigned port = 0; port < 24; ++port) {
        writeAnalyser(0x80 + port, 0);
    }
    for (unsigned port = 0; port < 24; ++port) {
        EXPECT_EQ(toAll(port), 0U) << port;
    }
    writeVlan(10, 0x1000001C);
    EXPECT_EQ(toAll(0, 10), 0U) << "a VLAN opens no path";
    writeAnalyser(0x80, 0x01FFFFFE);
    EXPECT_EQ(toAll(0, 10), 0x6U);
}

TEST_F(Vsc7390AnalyserTest, ATrunkOfThreeSpreadsFlows) {
    unsigned const members = 0x000E;
    for (unsigned port : {1U, 2U, 3U}) {
        writeAnalyser(0x40 + port, members);
        writeAnalyser(0x80 + port, 0x01FFFFFF & ~members);
    }
    for (unsigned code = 0; code < 16; ++code) {
        writeAnalyser(0x30 + code, (0x01FFFFFF & ~members) | 2U << code % 3);
    }
    chip().learn(station, 1, 2);
    unsigned flows[4] = {};
    for (std::uint64_t sender = 0; sender < 16; ++sender) {
        std::uint32_t const ports = chip().getEgressPorts(9, station, sender, 1);
        EXPECT_EQ(chip().getEgressPorts(9, station, sender, 1), ports) << "a flow stays where it is";
        for (unsigned port = 1; port < 4; ++port) {
            flows[port] += ports == 1U << port ? 1 : 0;
        }
    }
    EXPECT_EQ(flows[1], 6U);
    EXPECT_EQ(flows[2], 5U);
    EXPECT_EQ(flows[3], 5U);
    EXPECT_EQ(chip().getEgressPorts(1, broadcast, source, 1) & members, 0U) << "not back into the trunk";
}

TEST_F(Vsc7390AnalyserTest, OneMemberCanCarryEverything) {
    Options options;
    options.aggregationCode = Options::AggregationCode::zero;
    rebuild(options);
    writeAnalyser(0x30, 0x2);
    for (std::uint64_t sender = 0; sender < 16; ++sender) {
        EXPECT_EQ(chip().getEgressPorts(9, broadcast, sender, 1), 0x2U);
    }
}

TEST_F(Vsc7390AnalyserTest, NumbersThatDoNotExist) {
    EXPECT_THROW(toAll(25), std::out_of_range);
    EXPECT_THROW(toAll(0, 4096), std::out_of_range);
    EXPECT_EQ(toAll(24), 0x00FFFFFFU) << "the processor's port is one";
}

} // namespace
