#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

constexpr std::uint64_t frame = 25'600;

class DelayTest : public BoardFixture {
protected:
    void wait(std::uint64_t nanoseconds) { _board->getClock().advanceNanoseconds(nanoseconds); }
};

TEST_F(DelayTest, SmiShowsBusyUntilItsTimeIsOver) {
    chip().setBusyTime(Unit::smi, 3 * frame);
    mdioWrite(chipAddress, 0, 0x9A03);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x9A03U);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x9A03U);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x1A03U);
}

TEST_F(DelayTest, SmiTakesItsInputsAtTheStart) {
    chip().setBusyTime(Unit::smi, 3 * frame);
    mdioWrite(chipAddress, 1, 0x0123);
    mdioWrite(chipAddress, 0, 0x9607);
    mdioWrite(chipAddress, 1, 0x0456);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x9607U);
    EXPECT_EQ(mdioRead(chipAddress, 0), 0x1607U);
    EXPECT_EQ(chip().peek("port 0", 0x07), 0x0123U);
}

TEST_F(DelayTest, GlobalUnitsShowBusyUntilTheirTimeIsOver) {
    struct Case {
        Unit unit;
        unsigned reg;
        unsigned word;
        unsigned doneBit;
    };
    for (Case const& item : {Case{Unit::vtu, 0x05, 0x9000, 0x0010}, Case{Unit::atu, 0x0B, 0x9000, 0x0004},
                             Case{Unit::statistics, 0x1D, 0x9000, 0x0040}}) {
        chip().setBusyTime(item.unit, 1'000'000);
        write(global1, item.reg, item.word);
        EXPECT_EQ(read(global1, item.reg), item.word);
        EXPECT_EQ(read(global1, 0x00) & item.doneBit, 0U);
        wait(1'000'000);
        EXPECT_EQ(read(global1, item.reg), item.word & 0x7FFF);
        EXPECT_EQ(read(global1, 0x00) & item.doneBit, item.doneBit);
        EXPECT_EQ(chip().getCommands(item.unit), 1U);
    }
}

TEST_F(DelayTest, SmiPhyShowsBusyUntilItsTimeIsOver) {
    chip().setBusyTime(Unit::smiPhy, 1'000'000);
    write(global2, 0x18, 0x9800);
    EXPECT_EQ(read(global2, 0x18), 0x9800U);
    wait(1'000'000);
    EXPECT_EQ(read(global2, 0x18), 0x1800U);
    EXPECT_EQ(read(global2, 0x19), 0x3100U);
}

TEST_F(DelayTest, DelaysAreOptionsToo) {
    simulation::Marvell88E6096Options options;
    options.smiBusyNanoseconds = 2 * frame;
    options.smiPhyBusyNanoseconds = 1'000'000;
    options.vtuBusyNanoseconds = 1'000'000;
    options.atuBusyNanoseconds = 1'000'000;
    options.statisticsBusyNanoseconds = 1'000'000;
    rebuild(options);
    write(global1, 0x05, 0x9000);
    EXPECT_EQ(mdioRead(chipAddress, 0) & 0x8000U, 0x8000U);
    EXPECT_EQ(read(global1, 0x05), 0x9000U);
    write(global1, 0x0B, 0x9000);
    EXPECT_EQ(read(global1, 0x0B), 0x9000U);
    write(global1, 0x1D, 0x9000);
    EXPECT_EQ(read(global1, 0x1D), 0x9000U);
    write(global2, 0x18, 0x9800);
    EXPECT_EQ(read(global2, 0x18), 0x9800U);
}

TEST_F(DelayTest, ACommandDuringAnotherIsReportedAndCarriedOut) {
    chip().setBusyTime(Unit::vtu, 10'000'000);
    loadVtu(5, 5, 5, 0, 0, 0);
    EXPECT_EQ(misuse().getSize(), 0U);
    loadVtu(6, 6, 6, 0, 0, 0);
    EXPECT_EQ(chip().getVtu().size(), 2U);
    ASSERT_EQ(misuse().getSize(), 1U);
    auto const entry = misuse().getEntries()[0];
    EXPECT_EQ(entry.kind, Kind::commandWhileBusy);
    EXPECT_EQ(entry.chip, "switch 4");
    EXPECT_EQ(entry.unit, "global 1");
    EXPECT_EQ(entry.registerName, "VTUOperation");
}

TEST_F(DelayTest, ASmiCommandDuringAnotherIsReported) {
    chip().setBusyTime(Unit::smi, 10 * frame);
    mdioWrite(chipAddress, 0, 0x9A03);
    mdioWrite(chipAddress, 0, 0x9A07);
    EXPECT_EQ(misuse().getSize(Kind::commandWhileBusy), 1U);
}

} // namespace
