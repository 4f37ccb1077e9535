#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390ResetTest : public Vsc7390Fixture {};

TEST_F(Vsc7390ResetTest, Ports) {
    for (unsigned port = 0; port < 24; ++port) {
        EXPECT_EQ(readPort(port, 0x00), 0U) << port;
        EXPECT_EQ(readPort(port, 0x10), 1518U) << port;
        EXPECT_EQ(readPort(port, 0x7A), 1U) << port;
        for (unsigned address : {0x04U, 0x08U, 0x0CU, 0x24U, 0x6EU, 0x79U, 0xDEU, 0xDFU, 0xE0U}) {
            EXPECT_EQ(readPort(port, address), 0U) << port << ' ' << address;
        }
        for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
            EXPECT_EQ(readPort(port, counter), 0U) << port << ' ' << counter;
        }
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390ResetTest, OpenMasks) {
    for (unsigned address : {0x04U, 0x0DU, 0x0EU, 0x0FU, 0x10U}) {
        EXPECT_EQ(readAnalyser(address), 0x01FFFFFFU) << address;
    }
    for (unsigned code = 0; code < 16; ++code) {
        EXPECT_EQ(readAnalyser(0x30 + code), 0x01FFFFFFU) << code;
    }
}

TEST_F(Vsc7390ResetTest, DestinationMasks) {
    for (unsigned number = 0; number < 64; ++number) {
        EXPECT_EQ(readAnalyser(0x40 + number), number < 25 ? 1U << number : 0U) << number;
    }
}

TEST_F(Vsc7390ResetTest, SourceMasks) {
    for (unsigned number = 0; number < 32; ++number) {
        EXPECT_EQ(readAnalyser(0x80 + number), number < 25 ? 0x01FFFFFFU & ~(1U << number) : 0U) << number;
    }
}

TEST_F(Vsc7390ResetTest, ClosedMasksAndCommandRegisters) {
    for (unsigned address : {0x03U, 0x05U, 0x06U, 0x07U, 0x20U, 0xA0U, 0xB0U, 0xC0U, 0xD0U, 0xE0U}) {
        EXPECT_EQ(readAnalyser(address), 0U) << address;
    }
    EXPECT_EQ(read(arbiter, 0, 0x0E), 0U);
    EXPECT_EQ(read(arbiter, 0, 0x0C), 0x01FFFFFFU);
}

TEST_F(Vsc7390ResetTest, Tables) {
    for (unsigned vid : {0U, 1U, 10U, 4095U}) {
        EXPECT_EQ(readVlan(vid), 0x07FFFFFCU) << vid;
    }
    EXPECT_TRUE(chip().getVlans().empty());
    EXPECT_TRUE(chip().getMacTable().empty());
}

TEST_F(Vsc7390ResetTest, Identifier) {
    EXPECT_EQ(read(system, 0, 0x18), 0x07390000U);
    Options options;
    options.revision = 3;
    options.identifierLow = 0x321;
    rebuild(options);
    EXPECT_EQ(read(system, 0, 0x18), 0x37390321U);
}

// As drivers of the family begin: reset, wait for its end, then everything from nothing.
class Vsc7390MasterResetTest : public Vsc7390Fixture {
protected:
    void setUpAndReset() {
        writePort(3, 0x00, 0x101D0442);
        chip().setCounter(3, 0x50, 77);
        writeAnalyser(0x10, 0x8);
        writeAnalyser(0x83, 0);
        writeVlan(10, 0x10000022);
        writeMac(0x00CA, 0x00011002, 0x01010102, 0x1E07);
        write(arbiter, 0, 0x0E, 0x8);
        chip().queueFrames(5);
        write(mii, 1, 0x3, 0x40);
        write(mii, 1, 0x1, 0x00641234);
        write(mii, 1, 0x1, 0x04600000);
        writeAnalyser(0xB0, 5);
        write(system, 0, 0x14, 0x00000001);
    }
};

TEST_F(Vsc7390MasterResetTest, EndsByItself) {
    setUpAndReset();
    EXPECT_EQ(read(system, 0, 0x14), 0U);
}

TEST_F(Vsc7390MasterResetTest, LeavesAChipAsAfterPowerOn) {
    setUpAndReset();
    EXPECT_EQ(readPort(3, 0x00), 0U);
    EXPECT_EQ(readPort(3, 0x50), 0U);
    EXPECT_FALSE(chip().getPortMac(3).receives);
    EXPECT_EQ(readAnalyser(0x10), 0x01FFFFFFU);
    EXPECT_EQ(readAnalyser(0x83), 0x01FFFFF7U);
    EXPECT_EQ(readAnalyser(0xB0), 0U) << "no command runs";
    EXPECT_TRUE(chip().getVlans().empty());
    EXPECT_TRUE(chip().getMacTable().empty());
    EXPECT_EQ(read(arbiter, 0, 0x0E), 0U);
    EXPECT_EQ(read(arbiter, 0, 0x0C), 0x01FFFFFFU);
    EXPECT_EQ(read(mii, 1, 0x3), 0U);
    EXPECT_EQ(read(mii, 1, 0x0), 0U) << "no transfer runs";
    EXPECT_EQ(read(mii, 1, 0x2), 0U);
}

TEST_F(Vsc7390MasterResetTest, LeavesThePhysBesideTheChipAlone) {
    setUpAndReset();
    EXPECT_EQ(chip().peek("phy 3", 4), 0x1234U);
}

TEST_F(Vsc7390MasterResetTest, OtherBitsOfTheRegisterResetNothing) {
    writeAnalyser(0x10, 0x8);
    write(system, 0, 0x14, 0xFFFFFFFE);
    EXPECT_EQ(read(system, 0, 0x14), 0xFFFFFFFEU);
    EXPECT_EQ(readAnalyser(0x10), 0x8U);
}

TEST_F(Vsc7390MasterResetTest, CanKeepTheRegisters) {
    Options options;
    options.masterReset = Options::MasterReset::keepsRegisters;
    rebuild(options);
    setUpAndReset();
    EXPECT_EQ(read(system, 0, 0x14), 0U);
    EXPECT_EQ(readAnalyser(0x10), 0x8U);
    EXPECT_EQ(chip().getVlans().size(), 1U);
}

TEST_F(Vsc7390ResetTest, MasksCanStartOtherwise) {
    Options options;
    options.destinationMaskReset = Options::DestinationMaskReset::allPorts;
    options.aggregationMaskReset = Options::AggregationMaskReset::none;
    options.sourceMaskReset = Options::SourceMaskReset::allPorts;
    rebuild(options);
    EXPECT_EQ(readAnalyser(0x43), 0x01FFFFFFU);
    EXPECT_EQ(readAnalyser(0x59), 0U);
    EXPECT_EQ(readAnalyser(0x3F), 0U);
    EXPECT_EQ(readAnalyser(0x83), 0x01FFFFFFU);
    options.destinationMaskReset = Options::DestinationMaskReset::none;
    options.sourceMaskReset = Options::SourceMaskReset::none;
    rebuild(options);
    EXPECT_EQ(readAnalyser(0x43), 0U);
    EXPECT_EQ(readAnalyser(0x83), 0U);
}

TEST_F(Vsc7390ResetTest, PortsCanStartOtherwise) {
    Options options;
    options.maximumLengthReset = 9600;
    options.portVidReset = 0;
    options.vlanClear = Options::VlanClear::noMembers;
    rebuild(options);
    EXPECT_EQ(readPort(17, 0x10), 9600U);
    EXPECT_EQ(readPort(17, 0x7A), 0U);
    EXPECT_EQ(readVlan(1), 0U);
    EXPECT_TRUE(chip().getVlans().empty());
}

} // namespace
