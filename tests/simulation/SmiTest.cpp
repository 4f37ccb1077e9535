#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class SmiTest : public BoardFixture {
protected:
    std::uint64_t now() { return _board->getClock().getNanoseconds(); }
};

TEST_F(SmiTest, ReadAndWriteReachTheRegister) {
    write(port0 + 2, 0x07, 0x1123);
    EXPECT_EQ(read(port0 + 2, 0x07), 0x1123U);
    EXPECT_EQ(chip().peek("port 2", 0x07), 0x1123U);
}

TEST_F(SmiTest, CommandRegisterKeepsTheCommandWithoutBusy) {
    mdioWrite(chipAddress, 0, 0x9800 | 0x10 << 5 | 0x03);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x1A03U);
    EXPECT_EQ(mdioRead(chipAddress, 1), 0x0980U);
}

TEST_F(SmiTest, WordsThatStartNothing) {
    mdioWrite(chipAddress, 1, 0x0FFF);
    // Busy clear; operations 00 and 11.
    mdioWrite(chipAddress, 0, 0x1400 | 0x10 << 5 | 0x07);
    mdioWrite(chipAddress, 0, 0x9000 | 0x10 << 5 | 0x07);
    mdioWrite(chipAddress, 0, 0x9C00 | 0x10 << 5 | 0x07);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x1E07U);
    EXPECT_EQ(mdioRead(chipAddress, 1), 0x0FFFU);
    EXPECT_EQ(chip().peek("port 0", 0x07), 0x0001U);
    EXPECT_EQ(log().getSize(), 0U);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 2U);
}

TEST_F(SmiTest, OtherRegistersOfTheChipReadAsAnIdleBus) {
    EXPECT_EQ(mdioRead(chipAddress, 2), 0xFFFFU);
    mdioWrite(chipAddress, 3, 0);
    EXPECT_EQ(mdioRead(chipAddress, 3), 0xFFFFU);
    EXPECT_EQ(misuse().getSize(Kind::unknownRegister), 3U);
}

TEST_F(SmiTest, OtherAddressesReadAsAnIdleBus) {
    for (unsigned address = 0; address < 32; ++address) {
        if (address != chipAddress) {
            EXPECT_EQ(mdioRead(address, 0), 0xFFFFU) << address;
        }
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SmiTest, AnIdleBusMayReadAsZero) {
    simulation::SimulatedBoard::Options options;
    options.mdio.idleValue = 0;
    rebuild(options);
    EXPECT_EQ(mdioRead(9, 0), 0U);
}

TEST_F(SmiTest, RegisterReadTakesSixFramesAndAWriteFour) {
    read(port0, 0x03);
    EXPECT_EQ(now(), 153'600U);
    EXPECT_EQ(log().getMdioFrames(), 6U);
    write(port0, 0x07, 1);
    EXPECT_EQ(now(), 153'600U + 102'400U);
    EXPECT_EQ(log().getMdioFrames(), 10U);
    EXPECT_EQ(_board->getBusNanoseconds(), now());
}

TEST_F(SmiTest, PhyReadTakesSixteenFramesAndAWriteEight) {
    phyRead(0, 0);
    EXPECT_EQ(now(), 409'600U);
    phyWrite(0, 0, 0x3100);
    EXPECT_EQ(now(), 409'600U + 204'800U);
}

TEST_F(SmiTest, AllBitsOfListedRegistersThatCanBeWrittenReadBack) {
    struct Case {
        unsigned device;
        unsigned reg;
        unsigned bits;
    };
    Case const cases[] = {
        {0x14, 0x01, 0xFFFF}, {0x14, 0x04, 0xFFFF}, {0x14, 0x05, 0xCFFF}, {0x14, 0x06, 0xF7FF},
        {0x14, 0x07, 0xFFFF}, {0x14, 0x08, 0xFFFF}, {0x14, 0x0B, 0xFFFF}, {0x1B, 0x01, 0x0FFF},
        {0x1B, 0x02, 0x0FFF}, {0x1B, 0x03, 0x003F}, {0x1B, 0x04, 0x6400}, {0x1B, 0x06, 0x1FFF},
        {0x1B, 0x07, 0xFFFF}, {0x1B, 0x08, 0xFFFF}, {0x1B, 0x09, 0xFFFF}, {0x1B, 0x0A, 0xFFFF},
        {0x1B, 0x0C, 0xFFFF}, {0x1B, 0x0D, 0xFFFF}, {0x1B, 0x0E, 0xFFFF}, {0x1B, 0x0F, 0xFFFF},
        {0x1C, 0x02, 0xFFFF}, {0x1C, 0x03, 0xFFFF}, {0x1C, 0x05, 0xE0FF}, {0x1C, 0x19, 0xFFFF},
    };
    for (Case const& item : cases) {
        write(item.device, item.reg, item.bits);
        EXPECT_EQ(read(item.device, item.reg), item.bits) << item.device << ' ' << item.reg;
        write(item.device, item.reg, 0);
        EXPECT_EQ(read(item.device, item.reg), 0U) << item.device << ' ' << item.reg;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(SmiTest, UnlistedRegistersAndDevicesArePlainStorage) {
    for (unsigned device : {port0 + 5, global2, 0x05U, 0x1FU}) {
        EXPECT_EQ(read(device, 0x1A), 0U) << device;
        write(device, 0x1A, 0xBEEF);
        EXPECT_EQ(read(device, 0x1A), 0xBEEFU) << device;
    }
}

TEST_F(SmiTest, PortElevenWouldBeGlobal1AndTwelveGlobal2) {
    EXPECT_EQ(read(port0 + 11, 0x0A), 0x0140U);
    write(port0 + 12, 0x19, 0x1234);
    EXPECT_EQ(chip().peek("global 2", 0x19), 0x1234U);
}

} // namespace
