#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class FaultTest : public BoardFixture {
protected:
    /// An access as a driver makes it that gives up after a second.
    bool driverRead(unsigned device, unsigned reg, unsigned& value) {
        if (!becomesReady()) {
            return false;
        }
        mdioWrite(chipAddress, 0, 0x9800 | device << 5 | reg);
        if (!becomesReady()) {
            return false;
        }
        value = mdioRead(chipAddress, 1);
        return true;
    }

    bool driverWrite(unsigned device, unsigned reg, unsigned value) {
        if (!becomesReady()) {
            return false;
        }
        mdioWrite(chipAddress, 1, value);
        mdioWrite(chipAddress, 0, 0x9400 | device << 5 | reg);
        return true;
    }
};

TEST_F(FaultTest, TheNthAccessFailsAndNoOther) {
    for (unsigned nth = 1; nth <= 6; ++nth) {
        rebuild(simulation::SimulatedBoard::Options());
        chip().failAccess(nth);
        for (unsigned access = 1; access <= 6; ++access) {
            unsigned value = 0;
            bool const worked =
                access % 2 == 0 ? driverRead(port0, 0x03, value) : driverWrite(port0, 0x07, access);
            EXPECT_EQ(worked, access != nth) << nth << ' ' << access;
        }
        EXPECT_EQ(log().getSize(), 5U);
        EXPECT_EQ(misuseText(), "");
    }
}

TEST_F(FaultTest, AFaultCanBeDisarmed) {
    chip().failAccess(1);
    chip().failAccess(0);
    EXPECT_TRUE(driverWrite(port0, 0x07, 1));
    EXPECT_TRUE(driverWrite(port0, 0x07, 1));
}

TEST_F(FaultTest, AFailingAccessTakesASecondAndNotMuchMore) {
    chip().failAccess(1);
    EXPECT_FALSE(driverWrite(port0, 0x07, 1));
    EXPECT_GE(_board->getClock().getNanoseconds(), 1'000'000'000U);
    EXPECT_TRUE(driverWrite(port0, 0x07, 1));
    EXPECT_LT(_board->getClock().getNanoseconds(), 1'020'000'000U);
}

TEST_F(FaultTest, TransferNumbersOfTheLogAreThoseOfFailingAccesses) {
    phyRead(3, 0);
    write(port0, 0x07, 5);
    auto const entries = log().getEntries();
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_EQ(entries[0].transfer, 1U);
    EXPECT_EQ(entries[1].transfer, 1U);
    EXPECT_EQ(entries[2].transfer, 2U);
    EXPECT_EQ(entries[3].transfer, 3U);
    EXPECT_EQ(entries[4].transfer, 4U);
}

TEST_F(FaultTest, SmiHangsFromNowOn) {
    chip().hang(Unit::smi);
    unsigned value = 0;
    EXPECT_FALSE(driverRead(port0, 0x03, value));
    EXPECT_FALSE(driverRead(port0, 0x03, value));
    chip().release(Unit::smi);
    EXPECT_TRUE(driverRead(port0, 0x03, value));
    EXPECT_EQ(value, 0x0980U);
}

TEST_F(FaultTest, SmiHangsFromTheSecondCommandOn) {
    chip().hang(Unit::smi, 2);
    unsigned value = 0;
    EXPECT_TRUE(driverRead(port0, 0x03, value));
    EXPECT_FALSE(driverRead(port0, 0x03, value));
    EXPECT_FALSE(driverRead(port0, 0x03, value));
}

TEST_F(FaultTest, OtherUnitsHang) {
    struct Case {
        Unit unit;
        unsigned device;
        unsigned reg;
        unsigned word;
    };
    for (Case const& item :
         {Case{Unit::vtu, global1, 0x05, 0x9000}, Case{Unit::atu, global1, 0x0B, 0x9000},
          Case{Unit::statistics, global1, 0x1D, 0x9000}, Case{Unit::smiPhy, global2, 0x18, 0x9800}}) {
        chip().hang(item.unit, 1);
        EXPECT_EQ(read(item.device, item.reg) & 0x8000U, 0U);
        write(item.device, item.reg, item.word);
        _board->getClock().advanceNanoseconds(60'000'000'000);
        EXPECT_EQ(read(item.device, item.reg), item.word);
        chip().release(item.unit);
        EXPECT_EQ(read(item.device, item.reg), item.word & 0x7FFFU);
        chip().hang(item.unit);
        EXPECT_EQ(read(item.device, item.reg), item.word);
        chip().release(item.unit);
    }
}

TEST_F(FaultTest, StuckBits) {
    chip().stick("port 3", 0x07, 0x0100, 0x0001);
    write(port0 + 3, 0x07, 0x0003);
    EXPECT_EQ(read(port0 + 3, 0x07), 0x0102U);
    write(port0 + 3, 0x07, 0x0001);
    EXPECT_EQ(read(port0 + 3, 0x07), 0x0100U);
    chip().stick("port 3", 0x07, 0, 0);
    EXPECT_EQ(read(port0 + 3, 0x07), 0x0001U);
    EXPECT_EQ(read(port0 + 4, 0x07), 0x0001U);
}

TEST_F(FaultTest, AStuckBitCanBeThatOfABusyFlagOrAnIdentifier) {
    chip().stick("global 1", 0x05, 0x8000, 0);
    flush();
    EXPECT_EQ(read(global1, 0x05), 0x9000U);
    chip().stick("port 0", 0x03, 0, 0x0080);
    EXPECT_EQ(read(port0, 0x03), 0x0900U);
}

TEST_F(FaultTest, PeekAndPokeLeaveNoTrace) {
    chip().poke("port 0", 0x03, 0x0950);
    chip().poke("global 1", 0x05, 0x9000);
    EXPECT_EQ(chip().peek("port 0", 0x03), 0x0950U);
    EXPECT_EQ(chip().getCommands(Unit::vtu), 0U);
    EXPECT_EQ(log().getSize(), 0U);
    EXPECT_EQ(log().getBusAccesses(), 0U);
    EXPECT_EQ(read(port0, 0x03), 0x0950U);
}

TEST_F(FaultTest, UnitsByName) {
    auto const units = chip().getUnits();
    EXPECT_EQ(units.size(), 11U + 2U + 8U);
    EXPECT_EQ(units.front()->getName(), "port 0");
    EXPECT_EQ(units.back()->getName(), "phy 7");
    EXPECT_THROW(chip().peek("port 11", 0), std::out_of_range);
    EXPECT_THROW(chip().poke("port 11", 0, 0), std::out_of_range);
    EXPECT_THROW(chip().stick("", 0, 0, 0), std::out_of_range);
}

} // namespace
