#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390FaultTest : public Vsc7390Fixture {
protected:
    static constexpr unsigned maximumLength3 = 0x4C40;
    static constexpr unsigned setUp = 0x8080;
    static constexpr unsigned identifier = 0x1C060;

    /// Accesses in turn: write, direct read, indirect read.
    bool accessRegister(unsigned number) {
        unsigned value = 0;
        switch (number % 3) {
        case 0:
            return tryBusWrite(setUp, number);
        case 1:
            return tryBusRead(identifier, value);
        default:
            return tryBusRead(maximumLength3, value) && becomesReady() && tryBusRead(indirectData, value);
        }
    }
};

TEST_F(Vsc7390FaultTest, TheNthRegisterAccessIsRefusedAndNoOther) {
    for (unsigned nth = 1; nth <= 6; ++nth) {
        rebuild(Options());
        chip().failAccess(nth);
        for (unsigned access = 1; access <= 6; ++access) {
            EXPECT_EQ(accessRegister(access), access != nth) << nth << ' ' << access;
        }
        EXPECT_EQ(log().getSize(), 5U) << nth;
        EXPECT_EQ(misuseText(), "");
    }
}

TEST_F(Vsc7390FaultTest, TurnedBytesAreTurnedBothWays) {
    unsigned value = 0;
    chip().turnBytes();
    EXPECT_TRUE(tryBusRead(identifier, value));
    EXPECT_EQ(value, 0x00003907U);
    EXPECT_TRUE(tryBusWrite(0x1C008, 0x0C000000));
    EXPECT_EQ(chip().peek("system", 2), 0x0000000CU);
}

TEST_F(Vsc7390FaultTest, ARefusedReadLeavesTheValueAlone) {
    chip().failAccess(1);
    unsigned value = 0x55;
    EXPECT_FALSE(tryBusRead(identifier, value));
    EXPECT_EQ(value, 0x55U);
}

TEST_F(Vsc7390FaultTest, TransferNumbersAreThoseOfFailingAccesses) {
    accessRegister(3);
    chip().failAccess(1);
    accessRegister(1);
    accessRegister(2);
    auto const entries = log().getEntries();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].transfer, 1U);
    EXPECT_EQ(entries[1].transfer, 3U);
}

TEST_F(Vsc7390FaultTest, AFaultCanBeDisarmed) {
    chip().failAccess(1);
    chip().failAccess(0);
    chip().failBusAccess(1);
    chip().failBusAccess(0);
    EXPECT_TRUE(accessRegister(1));
}

TEST_F(Vsc7390FaultTest, LostAccesses) {
    Options options;
    options.failedAccess = Options::FailedAccess::lost;
    rebuild(options);
    chip().failAccess(1);
    busWrite(setUp, 4);
    EXPECT_EQ(chip().peek("analyser", 0x20), 0U);
    chip().failAccess(1);
    EXPECT_EQ(busRead(identifier), 0xFFFFFFFFU);
    EXPECT_EQ(busRead(identifier), 0x07390000U);
    chip().failAccess(1);
    EXPECT_EQ(readPort(3, 0x10), 0xFFFFFFFFU);
    EXPECT_EQ(readPort(3, 0x10), 1518U);
    EXPECT_EQ(log().getSize(), 2U);
}

TEST_F(Vsc7390FaultTest, TheNthBusAccessFailsPollsIncluded) {
    unsigned value = 0;
    chip().failBusAccess(2);
    EXPECT_TRUE(tryBusRead(maximumLength3, value));
    EXPECT_FALSE(tryBusRead(indirectStatus, value));
    EXPECT_TRUE(becomesReady());
    chip().failBusAccess(1);
    EXPECT_FALSE(tryBusRead(indirectData, value));
    EXPECT_TRUE(tryBusRead(indirectData, value));
    EXPECT_EQ(value, 1518U);
    chip().failBusAccess(1);
    EXPECT_FALSE(tryBusWrite(setUp, 4));
    EXPECT_EQ(chip().peek("analyser", 0x20), 0U);
    EXPECT_EQ(_board->getBusNanoseconds(), _board->getBusAccesses() * 100);
}

TEST_F(Vsc7390FaultTest, AnEmptySocketReadsAllOnes) {
    chip().unplug();
    EXPECT_EQ(busRead(identifier), 0xFFFFFFFFU);
    EXPECT_EQ(busRead(indirectStatus), 0xFFFFFFFFU);
    busWrite(setUp, 4);
    EXPECT_EQ(log().getSize(), 0U);
    EXPECT_EQ(_board->getBusAccesses(), 3U);
    chip().plug();
    EXPECT_EQ(busRead(identifier), 0x07390000U);
    EXPECT_EQ(readAnalyser(0x20), 0U);
}

TEST_F(Vsc7390FaultTest, AnIdleBusCanReadOtherwise) {
    Options options;
    options.idleBusValue = 0;
    rebuild(options);
    chip().unplug();
    EXPECT_EQ(busRead(identifier), 0U);
}

TEST_F(Vsc7390FaultTest, TheReadyBitNeverComes) {
    chip().hang(Unit::indirectRead);
    busRead(maximumLength3);
    EXPECT_FALSE(becomesReady());
    chip().release(Unit::indirectRead);
    EXPECT_TRUE(becomesReady());
    EXPECT_EQ(busRead(indirectData), 1518U);
}

TEST_F(Vsc7390FaultTest, TheReadyBitNeverComesFromTheSecondReadOn) {
    chip().hang(Unit::indirectRead, 2);
    EXPECT_EQ(readPort(3, 0x10), 1518U);
    for (int i = 0; i < 3; ++i) {
        busRead(maximumLength3);
        EXPECT_FALSE(becomesReady()) << i;
    }
}

TEST_F(Vsc7390FaultTest, SomeReadsAreLostAndTheNextIsNot) {
    chip().loseReads(2);
    busRead(maximumLength3);
    EXPECT_FALSE(becomesReady());
    busRead(maximumLength3);
    EXPECT_FALSE(becomesReady());
    busRead(maximumLength3);
    EXPECT_TRUE(becomesReady());
    EXPECT_EQ(busRead(indirectData), 1518U);
    chip().loseReads(5);
    chip().release(Unit::indirectRead);
    EXPECT_EQ(readPort(3, 0x10), 1518U);
}

TEST_F(Vsc7390FaultTest, TheReadyBitComesLate) {
    chip().setBusyTime(Unit::indirectRead, 1'500'000'000);
    busRead(maximumLength3);
    advance(1'499'999'000);
    EXPECT_EQ(busRead(indirectStatus), 0U);
    advance(1'000);
    EXPECT_EQ(busRead(indirectStatus), 0x10U);
}

TEST_F(Vsc7390FaultTest, TablesHang) {
    chip().hang(Unit::vlanTable);
    EXPECT_NE(readAnalyser(0xD0) & 3, 0U) << "command or not";
    chip().release(Unit::vlanTable);
    chip().hang(Unit::vlanTable, 2);
    writeAnalyser(0xD0, 1);
    EXPECT_EQ(readAnalyser(0xD0) & 3, 0U);
    writeAnalyser(0xD0, 2);
    advance(60'000'000'000);
    EXPECT_EQ(readAnalyser(0xD0) & 3, 2U);
    chip().release(Unit::vlanTable);
    EXPECT_EQ(readAnalyser(0xD0) & 3, 0U);

    chip().hang(Unit::macTable, 1);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 0U);
    writeAnalyser(0xB0, 7);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 7U);
    chip().release(Unit::macTable);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 0U);
    chip().hang(Unit::macTable);
    EXPECT_NE(readAnalyser(0xB0) & 7, 0U);
}

TEST_F(Vsc7390FaultTest, TablesAreBusyForATime) {
    chip().setBusyTime(Unit::macTable, 5'000'000);
    writeAnalyser(0xB0, 5);
    advance(50'000);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 5U) << "longer than by the options";
    advance(5'000'000);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 0U);
}

TEST_F(Vsc7390FaultTest, MiiControllersHang) {
    chip().hang(Unit::mii1);
    advance(60'000'000'000);
    EXPECT_EQ(read(mii, 1, 0x0) & 0x4, 0x4U);
    EXPECT_EQ(read(mii, 0, 0x0) & 0x4, 0U);
    chip().release(Unit::mii1);
    EXPECT_EQ(read(mii, 1, 0x0), 0U);
    chip().hang(Unit::mii0, 1);
    write(mii, 0, 0x1, 0x04000000);
    advance(60'000'000'000);
    EXPECT_EQ(read(mii, 0, 0x0) & 0x4, 0x4U);
}

TEST_F(Vsc7390FaultTest, StuckBits) {
    chip().stick("port 3", 0x7A, 0x100, 0x001);
    writePort(3, 0x7A, 0x003);
    EXPECT_EQ(readPort(3, 0x7A), 0x102U);
    chip().stick("system", 0x18, 0, 0x00001000);
    EXPECT_EQ(busRead(identifier), 0x07390000U & ~0x1000U);
    chip().stick("system", 0x30, 0, 0x10);
    busRead(maximumLength3);
    EXPECT_FALSE(becomesReady());
}

TEST_F(Vsc7390FaultTest, PeekAndPokeLeaveNoTrace) {
    chip().poke("system", 0x18, 0x17385000);
    chip().poke("analyser", 0xD0, 3);
    EXPECT_EQ(chip().peek("system", 0x18), 0x17385000U);
    EXPECT_EQ(chip().getCommands(Unit::vlanTable), 0U);
    EXPECT_EQ(log().getSize(), 0U);
    EXPECT_EQ(_board->getBusAccesses(), 0U);
    EXPECT_THROW(chip().peek("port 24", 0), std::out_of_range);
    EXPECT_EQ(chip().getUnits().size(), 24U + 1 + 1 + 2 + 1 + 16 + 1 + 24);
    for (simulation::RegisterFile const* const unit : chip().getUnits()) {
        EXPECT_EQ(&chip().getUnit(unit->getName()), unit);
        EXPECT_EQ(&chip().getUnit(unit->getIdentity().kind, unit->getIdentity().number), unit);
    }
}

} // namespace
