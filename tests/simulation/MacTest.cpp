#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class MacTest : public BoardFixture {
protected:
    unsigned get(unsigned offset) {
        unsigned value = 0;
        EXPECT_TRUE(_board->getMac().read(offset, value));
        return value;
    }

    void set(unsigned offset, unsigned value) { EXPECT_TRUE(_board->getMac().write(offset, value)); }
};

TEST_F(MacTest, AReadFrameLeavesItsDataInTheDataRegister) {
    set(0x10, 0x8081);
    EXPECT_EQ(get(0x14), 0x0000U);
    set(0x10, 0x80A1);
    EXPECT_EQ(get(0x14), 0xFFFFU);
    EXPECT_EQ(get(0x10), 0x80A1U);
}

TEST_F(MacTest, AWriteFrameTakesTheDataRegister) {
    set(0x14, 0x1234);
    set(0x10, 0x4081);
    set(0x14, 0);
    set(0x10, 0x8081);
    EXPECT_EQ(get(0x14), 0x1234U);
}

TEST_F(MacTest, OtherOpcodesSendNothing) {
    set(0x10, 0x0081);
    set(0x10, 0xC081);
    EXPECT_EQ(log().getMdioFrames(), 0U);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 2U);
}

TEST_F(MacTest, AFrameTakes25600Nanoseconds) {
    set(0x10, 0x8081);
    EXPECT_EQ(_board->getClock().getNanoseconds(), 25'600U);
    set(0x10, 0x8061);
    EXPECT_EQ(_board->getClock().getNanoseconds(), 51'200U);
    EXPECT_EQ(_board->getBusNanoseconds(), 51'200U);
}

TEST_F(MacTest, ControlIsStored) {
    EXPECT_EQ(get(0x20), 0U);
    set(0x20, 0xFFFFFFFF);
    EXPECT_EQ(get(0x20), 0xFFFFFFFFU);
    set(0x20, 0x3E00);
    EXPECT_EQ(_board->getMac().peek(0x20), 0x3E00U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(MacTest, ControlHasAResetValue) {
    simulation::SimulatedBoard::Options options;
    options.mac.controlReset = 0x1200;
    rebuild(options);
    EXPECT_EQ(get(0x20), 0x1200U);
}

TEST_F(MacTest, TheRestIsPlainStorage) {
    set(0x2C, 0x12345678);
    EXPECT_EQ(get(0x2C), 0x12345678U);
    EXPECT_EQ(misuse().getSize(Kind::unknownRegister), 2U);
    EXPECT_EQ(misuse().getEntries()[0].chip, "mac");
}

TEST_F(MacTest, StatusIsReadOnly) {
    set(0x18, 0x0001);
    EXPECT_EQ(get(0x18), 0U);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
}

TEST_F(MacTest, BusyForAWhileAfterEachFrame) {
    _board->getMac().setBusyTime(1'000);
    set(0x10, 0x8081);
    EXPECT_EQ(get(0x18), 1U);
    _board->getClock().advanceNanoseconds(1'000);
    EXPECT_EQ(get(0x18), 0U);
}

TEST_F(MacTest, BusyTimeIsAnOptionToo) {
    simulation::SimulatedBoard::Options options;
    options.mac.busyNanoseconds = 1'000;
    rebuild(options);
    set(0x10, 0x8081);
    EXPECT_EQ(get(0x18), 1U);
    set(0x10, 0x8081);
    EXPECT_EQ(misuse().getSize(Kind::commandWhileBusy), 1U);
}

TEST_F(MacTest, Hangs) {
    _board->getMac().hang(2);
    set(0x10, 0x8081);
    EXPECT_EQ(get(0x18), 0U);
    set(0x10, 0x8081);
    _board->getClock().advanceNanoseconds(60'000'000'000);
    EXPECT_EQ(get(0x18), 1U);
    _board->getMac().release();
    EXPECT_EQ(get(0x18), 0U);
    _board->getMac().hang();
    EXPECT_EQ(get(0x18), 1U);
}

TEST_F(MacTest, TheNthBusAccessFails) {
    _board->getMac().failAccess(2);
    unsigned value = 7;
    EXPECT_TRUE(_board->getMac().read(0x20, value));
    EXPECT_EQ(value, 0U);
    value = 7;
    EXPECT_FALSE(_board->getMac().read(0x20, value));
    EXPECT_EQ(value, 7U);
    EXPECT_TRUE(_board->getMac().read(0x20, value));
    _board->getMac().failAccess(1);
    EXPECT_FALSE(_board->getMac().write(0x20, 5));
    EXPECT_EQ(get(0x20), 0U);
}

TEST_F(MacTest, StuckBitsAndPokes) {
    _board->getMac().stick(0x18, 1, 0);
    EXPECT_EQ(get(0x18), 1U);
    _board->getMac().stick(0x18, 0, 0);
    _board->getMac().poke(0x14, 0xABCD);
    EXPECT_EQ(get(0x14), 0xABCDU);
}

TEST_F(MacTest, BusAccessesAreCounted) {
    set(0x20, 1);
    get(0x20);
    get(0x18);
    EXPECT_EQ(_board->getBusAccesses(), 3U);
    EXPECT_EQ(_board->getRegisterAccesses(), 0U);
}

TEST(MdioBusTest, AddressesAreTakenOnce) {
    struct Device : simulation::MdioDevice {
        std::uint16_t mdioRead(unsigned) override { return 0; }
        void mdioWrite(unsigned, std::uint16_t) override {}
    };
    simulation::Services services;
    simulation::MdioBus bus(services, simulation::MdioBus::Options());
    Device device;
    bus.attach(31, device);
    EXPECT_THROW(bus.attach(31, device), std::invalid_argument);
    EXPECT_THROW(bus.attach(32, device), std::out_of_range);
    EXPECT_EQ(bus.read(31, 0), 0U);
    EXPECT_EQ(bus.read(30, 0), 0xFFFFU);
}

} // namespace
