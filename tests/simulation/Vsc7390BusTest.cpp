#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390BusTest : public Vsc7390Fixture {
protected:
    /// Port 3's MAC configuration and maximum length, the system's identifier.
    static constexpr unsigned macConfig3 = 0x4C00;
    static constexpr unsigned maximumLength3 = 0x4C40;
    static constexpr unsigned identifier = 0x1C060;
};

TEST_F(Vsc7390BusTest, OffsetsAreBlockSubBlockAddress) {
    EXPECT_EQ(offsetOf(1, 3, 0x00), 0x4C00U);
    EXPECT_EQ(offsetOf(1, 3, 0x10), 0x4C40U);
    EXPECT_EQ(offsetOf(7, 0, 0x18), 0x1C060U);
    EXPECT_EQ(offsetOf(7, 0, 0x2C), 0x1C0B0U);
    EXPECT_EQ(offsetOf(7, 0, 0x30), 0x1C0C0U);
}

TEST_F(Vsc7390BusTest, TheSystemBlockAnswersAtOnce) {
    EXPECT_EQ(busRead(identifier), 0x07390000U);
    EXPECT_EQ(_board->getBusAccesses(), 1U);
    EXPECT_EQ(_board->getClock().getNanoseconds(), 100U);
    EXPECT_EQ(chip().getCommands(Unit::indirectRead), 0U);
}

TEST_F(Vsc7390BusTest, TheCaptureBlockAnswersAtOnce) {
    busWrite(offsetOf(capture, 5, 0xFF), 0xA5A5A5A5);
    EXPECT_EQ(busRead(offsetOf(capture, 5, 0xFF)), 0xA5A5A5A5U);
    EXPECT_EQ(busRead(offsetOf(capture, 4, 0xFF)), 0U);
    EXPECT_EQ(chip().getCommands(Unit::indirectRead), 0U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390BusTest, AnIndirectReadTakesThreeAccesses) {
    EXPECT_EQ(busRead(maximumLength3), 0U);
    advance(1'000);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(busRead(indirectData), 1518U);
    EXPECT_EQ(_board->getBusAccesses(), 3U);
    EXPECT_EQ(_board->getRegisterAccesses(), 1U);
}

TEST_F(Vsc7390BusTest, DataIsReadyAMicrosecondAfterTheStart) {
    busRead(maximumLength3);
    for (int poll = 1; poll <= 9; ++poll) {
        EXPECT_EQ(busRead(indirectStatus), 0U) << poll;
    }
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
}

TEST_F(Vsc7390BusTest, ReadyTimesAndBusTimesAreOptions) {
    Options options;
    options.busAccessNanoseconds = 40;
    options.indirectReadNanoseconds = 80;
    options.startingReadValue = 0x1234;
    rebuild(options);
    EXPECT_EQ(busRead(maximumLength3), 0x1234U);
    EXPECT_EQ(busRead(indirectStatus), 0U);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(_board->getBusNanoseconds(), 120U);
}

TEST_F(Vsc7390BusTest, NothingIsReadyBeforeTheFirstIndirectRead) {
    advance(1'000'000);
    EXPECT_EQ(busRead(indirectStatus), 0U);
}

TEST_F(Vsc7390BusTest, FetchingTheDataLeavesItReady) {
    EXPECT_EQ(read(lowPorts, 3, 0x10), 1518U);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(busRead(indirectData), 1518U);
}

TEST_F(Vsc7390BusTest, DirectAccessesLeaveTheDataReady) {
    busRead(maximumLength3);
    advance(1'000);
    busRead(identifier);
    busWrite(macConfig3, 1);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(busRead(indirectData), 1518U);
}

TEST_F(Vsc7390BusTest, TheNextIndirectReadClearsTheReadyBit) {
    read(lowPorts, 3, 0x10);
    busRead(macConfig3);
    EXPECT_EQ(busRead(indirectStatus), 0U);
    advance(1'000);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(busRead(indirectData), 0U);
}

TEST_F(Vsc7390BusTest, ANewReadReplacesOneThatIsOnItsWay) {
    writePort(3, 0x00, 0x10000442);
    busRead(maximumLength3);
    advance(500);
    busRead(macConfig3);
    advance(700);
    EXPECT_EQ(busRead(indirectStatus), 0U) << "the first would have been ready by now";
    advance(200);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
    EXPECT_EQ(busRead(indirectData), 0x10000442U);
}

TEST_F(Vsc7390BusTest, TheRegisterIsSampledAtTheStart) {
    writePort(3, 0x04, 0x000300FF);
    busRead(offsetOf(lowPorts, 3, 0x04));
    writePort(3, 0x04, 0);
    EXPECT_TRUE(becomesReady());
    EXPECT_EQ(busRead(indirectData), 0x000300FFU);
    EXPECT_EQ(readPort(3, 0x04), 0U);
}

TEST_F(Vsc7390BusTest, TheMiiBlockIsReadIndirectly) {
    write(mii, 1, 0x3, 0x5F);
    EXPECT_EQ(busRead(offsetOf(mii, 1, 0x3)), 0U);
    EXPECT_TRUE(becomesReady());
    EXPECT_EQ(busRead(indirectData), 0x5FU);
}

TEST_F(Vsc7390BusTest, AWriteIsOneAccess) {
    writeAnalyser(0x20, 4);
    EXPECT_EQ(_board->getBusAccesses(), 1U);
    EXPECT_EQ(_board->getClock().getNanoseconds(), 100U);
    EXPECT_EQ(readAnalyser(0x20), 4U);
}

TEST_F(Vsc7390BusTest, BusTimeIsThatOfTheAccesses) {
    read(lowPorts, 3, 0x10);
    advance(5'000'000);
    writeAnalyser(0x20, 4);
    EXPECT_EQ(_board->getBusNanoseconds(), _board->getBusAccesses() * 100);
    EXPECT_EQ(_board->getClock().getNanoseconds(), _board->getBusNanoseconds() + 5'000'000);
}

TEST_F(Vsc7390BusTest, PortsAreInTwoBlocks) {
    for (unsigned port = 0; port < 24; ++port) {
        writePort(port, 0x7A, port + 1);
    }
    for (unsigned port = 0; port < 24; ++port) {
        EXPECT_EQ(chip().peek("port " + std::to_string(port), 0x7A), port + 1);
        EXPECT_EQ(readPort(port, 0x7A), port + 1);
    }
    EXPECT_EQ(busRead(0x189E8), 0U);
    EXPECT_TRUE(becomesReady());
    EXPECT_EQ(busRead(indirectData), 19U) << "block 6, sub-block 2 is port 18";
}

TEST_F(Vsc7390BusTest, AbsentBlocksReadZeroAndDropWrites) {
    struct Case {
        unsigned block;
        unsigned subBlock;
    };
    for (Case const& item : {Case{0, 0}, Case{8, 0}, Case{15, 3}, Case{1023, 0}, Case{2, 1}, Case{3, 3},
                             Case{5, 1}, Case{6, 8}, Case{7, 1}}) {
        misuse().clear();
        write(item.block, item.subBlock, 0x00, 0xFFFFFFFF);
        EXPECT_EQ(read(item.block, item.subBlock, 0x00), 0U) << item.block << '.' << item.subBlock;
        EXPECT_EQ(misuse().getSize(Kind::absentBlock), 2U) << item.block << '.' << item.subBlock;
    }
}

TEST_F(Vsc7390BusTest, MemoryInitialisationTakesWrites) {
    write(mii, 2, 0x00, 0x01010400);
    EXPECT_EQ(chip().peek("memory", 0x00), 0x01010400U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390BusTest, TheSystemBlockStores) {
    busWrite(offsetOf(system, 0, 0x02), 12);
    busWrite(offsetOf(system, 0, 0x14), 2);
    EXPECT_EQ(busRead(offsetOf(system, 0, 0x02)), 12U);
    EXPECT_EQ(busRead(offsetOf(system, 0, 0x14)), 2U);
    EXPECT_EQ(readPort(0, 0x10), 1518U);
    EXPECT_EQ(misuseText(), "");
}

} // namespace
