// Flags of the global status that a driver waits for, and the reset of the chip.

#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

using Options = simulation::Marvell88E6096Options;

struct Row {
    unsigned reg;
    unsigned command;
    unsigned doneBit;
};

constexpr Row rows[] = {{0x05, 0x9000, 0x0010}, {0x0B, 0x9000, 0x0004}, {0x1D, 0x9000, 0x0040}};
constexpr unsigned doneBits = 0x0054;

class DoneFlagTest : public BoardFixture {
protected:
    unsigned done() { return read(global1, 0x00) & doneBits; }
};

TEST_F(DoneFlagTest, IsSetByTheEndOfACommandAndClearedByALook) {
    for (Row const& row : rows) {
        EXPECT_EQ(done(), 0U);
        write(global1, row.reg, row.command);
        EXPECT_EQ(chip().peek("global 1", 0x00) & doneBits, row.doneBit);
        EXPECT_EQ(done(), row.doneBit);
        EXPECT_EQ(done(), 0U);
        write(global1, row.reg, row.command);
        EXPECT_EQ(done(), row.doneBit);
    }
}

TEST_F(DoneFlagTest, ALookWhileTheCommandRunsClearsNothing) {
    Options options;
    options.vtuBusyNanoseconds = 10'000'000;
    rebuild(options);
    write(global1, 0x05, 0x9000);
    EXPECT_EQ(done(), 0U);
    _board->getClock().advanceNanoseconds(10'000'000);
    EXPECT_EQ(done(), 0x0010U);
    EXPECT_EQ(done(), 0U);
}

TEST_F(DoneFlagTest, MayStay) {
    Options options;
    options.doneFlags = Options::DoneFlags::stay;
    rebuild(options);
    write(global1, 0x05, 0x9000);
    EXPECT_EQ(done(), 0x0010U);
    EXPECT_EQ(done(), 0x0010U);
}

TEST_F(DoneFlagTest, AResetOfTheChipEndsAndKeepsTheRegisters) {
    loadVtu(5, 5, 1, 0, 0, 0);
    write(port0 + 2, 0x07, 0x0123);
    write(global1, 0x04, 0xC000);
    EXPECT_EQ(read(global1, 0x04), 0x4000U);
    EXPECT_EQ(read(global1, 0x00) & 0x0800U, 0x0800U);
    EXPECT_EQ(read(port0 + 2, 0x07), 0x0123U);
    EXPECT_EQ(chip().getVtu().size(), 1U);
}

TEST_F(DoneFlagTest, AResetOfTheChipMayRestoreWhatItStartedWith) {
    Options options;
    options.softwareReset = Options::SoftwareReset::restoresDefaults;
    rebuild(options);
    loadVtu(5, 5, 1, 0, 0, 0);
    write(port0 + 2, 0x07, 0x0123);
    write(global2, 0x07, 0xB000);
    phyWrite(1, 0, 0x2100);
    write(global1, 0x04, 0x4000);
    EXPECT_EQ(chip().getVtu().size(), 1U);
    write(global1, 0x04, 0xC000);
    EXPECT_EQ(read(global1, 0x04), 0x0000U);
    EXPECT_EQ(read(port0 + 2, 0x07), 0x0001U);
    EXPECT_EQ(chip().getVtu().size(), 0U);
    EXPECT_EQ(phyRead(1, 0), 0x3100U);
    write(global2, 0x07, 0x3000);
    EXPECT_EQ(read(global2, 0x07), 0x37FFU);
}

} // namespace
