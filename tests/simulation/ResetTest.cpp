#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

using Options = simulation::Marvell88E6096Options;

class ResetTest : public BoardFixture {};

TEST_F(ResetTest, EveryPortSaysThatTheChipIsAn88E6096) {
    for (unsigned port = 0; port < 11; ++port) {
        EXPECT_EQ(read(port0 + port, 0x03), 0x0980U) << port;
    }
}

TEST_F(ResetTest, TheRevisionIsAnOption) {
    Options options;
    options.revision = 2;
    rebuild(options);
    EXPECT_EQ(read(port0, 0x03), 0x0982U);
    EXPECT_EQ(phyRead(0, 3), 0x0C82U);
}

TEST_F(ResetTest, PortsWithPhysFollowThem) {
    for (unsigned port = 0; port < 11; ++port) {
        EXPECT_EQ(read(port0 + port, 0x00), port < 8 ? 0x1000U : 0x0000U) << port;
    }
}

TEST_F(ResetTest, PortRegisters) {
    for (unsigned port = 0; port < 11; ++port) {
        EXPECT_EQ(read(port0 + port, 0x01), 0x0003U) << port;
        EXPECT_EQ(read(port0 + port, 0x04), 0x007FU) << port;
        EXPECT_EQ(read(port0 + port, 0x05), 0x0000U) << port;
        EXPECT_EQ(read(port0 + port, 0x06), 0x07FFU & ~(1U << port)) << port;
        EXPECT_EQ(read(port0 + port, 0x07), 0x0001U) << port;
        EXPECT_EQ(read(port0 + port, 0x08), 0x0080U) << port;
        EXPECT_EQ(read(port0 + port, 0x0B), 1U << port) << port;
        for (unsigned counter = 0x10; counter <= 0x13; ++counter) {
            EXPECT_EQ(read(port0 + port, counter), 0U) << port << ' ' << counter;
        }
    }
}

TEST_F(ResetTest, OtherVlanTable) {
    Options options;
    options.vlanTableReset = Options::VlanTableReset::none;
    rebuild(options);
    EXPECT_EQ(read(port0 + 3, 0x06), 0U);
}

TEST_F(ResetTest, OtherDefaultVidAndPortState) {
    Options options;
    options.defaultVidReset = 0;
    options.portStateReset = Options::PortStateReset::disabled;
    rebuild(options);
    EXPECT_EQ(read(port0 + 3, 0x07), 0U);
    EXPECT_EQ(read(port0 + 3, 0x04), 0x007CU);
}

TEST_F(ResetTest, TheStrapShowsHowPortsStart) {
    EXPECT_EQ(read(global1, 0x00) & 0x3000U, 0x2000U);
    Options options;
    options.portStateReset = Options::PortStateReset::disabled;
    rebuild(options);
    EXPECT_EQ(read(global1, 0x00) & 0x3000U, 0x0000U);
}

struct ResetRow {
    unsigned device;
    unsigned reg;
    unsigned reset;
};

// A driver looks at each, writes what it wants and reads it back.
constexpr ResetRow storage[] = {
    {0x12, 0x02, 0xFF00}, {0x12, 0x09, 0x0001}, {0x12, 0x0A, 0x8000}, {0x12, 0x0C, 0},      {0x12, 0x0D, 0},
    {0x12, 0x0E, 0},      {0x12, 0x0F, 0x9100}, {0x12, 0x18, 0x3210}, {0x12, 0x19, 0x7654}, {0x1B, 0x10, 0},
    {0x1B, 0x11, 0},      {0x1B, 0x12, 0},      {0x1B, 0x13, 0},      {0x1B, 0x14, 0},      {0x1B, 0x15, 0},
    {0x1B, 0x16, 0},      {0x1B, 0x17, 0},      {0x1B, 0x18, 0},      {0x1B, 0x19, 0},      {0x1B, 0x1A, 0},
    {0x1B, 0x1B, 0},      {0x1B, 0x1C, 0},      {0x1C, 0x0E, 0},
};

TEST_F(ResetTest, WhatIsOnlyStoredHasANameAndKeepsWhatIsWritten) {
    for (ResetRow const& row : storage) {
        EXPECT_EQ(read(row.device, row.reg), row.reset) << row.device << ' ' << row.reg;
        write(row.device, row.reg, 0xA5C3);
        EXPECT_EQ(read(row.device, row.reg), 0xA5C3U) << row.device << ' ' << row.reg;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(ResetTest, WhatIsOnlyStoredMayStartAtZero) {
    Options options;
    options.storageReset = Options::StorageReset::zero;
    rebuild(options);
    for (ResetRow const& row : storage) {
        EXPECT_EQ(read(row.device, row.reg), 0U) << row.device << ' ' << row.reg;
    }
}

TEST_F(ResetTest, GlobalRegisters) {
    EXPECT_EQ(read(global1, 0x00), 0xA800U);
    EXPECT_EQ(read(global1, 0x0A), 0x0140U);
    EXPECT_EQ(chip().getAgeSeconds(), 300U);
    EXPECT_EQ(read(global1, 0x1D), 0x0C00U);
    for (unsigned staging : {0x01U, 0x02U, 0x03U, 0x04U, 0x05U, 0x06U, 0x07U, 0x08U, 0x09U, 0x0BU, 0x0CU,
                             0x0DU, 0x0EU, 0x0FU, 0x1EU, 0x1FU}) {
        EXPECT_EQ(read(global1, staging), 0U) << staging;
    }
    for (unsigned reg : {0x02U, 0x03U, 0x05U, 0x18U, 0x19U}) {
        EXPECT_EQ(read(global2, reg), 0U) << reg;
    }
}

TEST_F(ResetTest, TablesAreEmpty) {
    EXPECT_TRUE(chip().getVtu().empty());
    EXPECT_TRUE(chip().getStu().empty());
}

TEST_F(ResetTest, Phys) {
    for (unsigned phy = 0; phy < 8; ++phy) {
        EXPECT_EQ(phyRead(phy, 0), 0x3100U) << phy;
        EXPECT_EQ(phyRead(phy, 2), 0x0141U) << phy;
        EXPECT_EQ(phyRead(phy, 3), 0x0C80U) << phy;
        EXPECT_EQ(phyRead(phy, 16) & 0x0030U, 0x0030U) << phy;
    }
}

TEST_F(ResetTest, LookingAtAllOfItIsNoMisuse) {
    for (unsigned reg : {0x00U, 0x01U, 0x03U, 0x04U, 0x05U, 0x06U, 0x07U, 0x08U, 0x0BU, 0x10U, 0x13U}) {
        read(port0, reg);
    }
    EXPECT_EQ(misuseText(), "");
}

} // namespace
