#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

using Options = simulation::Marvell88E6096Options;
using Side = simulation::Marvell88E6096TestSide;

class VtuTest : public BoardFixture {
protected:
    void expectStaging(unsigned vid, unsigned fid, unsigned sid, unsigned data0, unsigned data1,
                       unsigned data2) {
        EXPECT_EQ(read(global1, 0x06), vid);
        EXPECT_EQ(read(global1, 0x02), fid);
        EXPECT_EQ(read(global1, 0x03), sid);
        EXPECT_EQ(read(global1, 0x07), data0);
        EXPECT_EQ(read(global1, 0x08), data1);
        EXPECT_EQ(read(global1, 0x09), data2);
    }

    void search(unsigned vid) {
        write(global1, 0x06, vid);
        write(global1, 0x05, 0xC000);
    }
};

TEST_F(VtuTest, LoadStoresMemberTagsOnly) {
    loadVtu(5, 0x105, 7, 0xFEDC, 0x7654, 0xB210);
    auto const entry = chip().getVtuEntry(5);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->fid, 0x105U);
    EXPECT_EQ(entry->sid, 7U);
    EXPECT_EQ(entry->memberTags, (std::array<unsigned, 11>{0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2}));
    EXPECT_EQ(entry->priorityOverride, 0xBU);
    EXPECT_TRUE(chip().getStu().empty());
}

TEST_F(VtuTest, LoadLeavesTheStagingRegistersAlone) {
    loadVtu(5, 0x105, 7, 0xFEDC, 0x7654, 0xB210);
    expectStaging(0x1005, 0x105, 7, 0xFEDC, 0x7654, 0xB210);
    EXPECT_EQ(read(global1, 0x05), 0x3000U);
}

TEST_F(VtuTest, LoadReplacesAndPurgeDeletes) {
    loadVtu(5, 1, 1, 0, 0, 0);
    loadVtu(5, 2, 2, 0x1111, 0, 0);
    EXPECT_EQ(chip().getVtu().size(), 1U);
    EXPECT_EQ(chip().getVtuEntry(5)->fid, 2U);
    loadVtu(6, 6, 6, 0, 0, 0);
    write(global1, 0x06, 0x0005);
    write(global1, 0x05, 0xB000);
    EXPECT_FALSE(chip().getVtuEntry(5));
    EXPECT_TRUE(chip().getVtuEntry(6));
    EXPECT_EQ(read(global1, 0x06), 0x0005U);
}

TEST_F(VtuTest, FlushEmptiesBothTables) {
    loadVtu(5, 1, 1, 0, 0, 0);
    loadStu(1, 0x4444, 0, 0);
    flush();
    EXPECT_TRUE(chip().getVtu().empty());
    EXPECT_TRUE(chip().getStu().empty());
    // The staging registers go on from where they were.
    EXPECT_EQ(read(global1, 0x07), 0x4444U);
}

TEST_F(VtuTest, FlushNeedsNoWaitBeforeTheStagingIsRewritten) {
    flush();
    loadVtu(5, 1, 1, 0, 0, 0);
    EXPECT_EQ(chip().getVtu().size(), 1U);
}

TEST_F(VtuTest, GetNextFindsTheLowestAbove) {
    loadVtu(20, 20, 2, 0x3333, 0x3333, 0x0333);
    loadVtu(5, 5, 1, 0xFEDC, 0x7654, 0xB210);
    search(4);
    expectStaging(0x1005, 5, 1, 0x3210, 0x3210, 0xB210);
    search(5);
    expectStaging(0x1014, 20, 2, 0x3333, 0x3333, 0x0333);
}

TEST_F(VtuTest, GetNextIgnoresTheValidBitOfTheKey) {
    loadVtu(5, 5, 1, 0, 0, 0);
    search(0x1004);
    EXPECT_EQ(read(global1, 0x06), 0x1005U);
}

TEST_F(VtuTest, GetNextFrom4095StartsAtZero) {
    loadVtu(0, 9, 0, 0, 0, 0);
    loadVtu(7, 7, 0, 0, 0, 0);
    search(0x0FFF);
    EXPECT_EQ(read(global1, 0x06), 0x1000U);
    EXPECT_EQ(read(global1, 0x02), 9U);
}

TEST_F(VtuTest, GetNextFinds4095) {
    loadVtu(0x0FFF, 3, 0, 0, 0, 0);
    search(0x0FFE);
    EXPECT_EQ(read(global1, 0x06), 0x1FFFU);
}

TEST_F(VtuTest, GetNextThatFindsNothingLeavesZeros) {
    loadVtu(5, 5, 1, 0x3333, 0x3333, 0x0333);
    search(5);
    expectStaging(0x0FFF, 0, 0, 0, 0, 0);
}

TEST_F(VtuTest, GetNextThatFindsNothingMayKeepTheStaging) {
    Options options;
    options.searchMiss = Options::SearchMiss::kept;
    rebuild(options);
    loadVtu(5, 5, 1, 0x3332, 0x3333, 0x0333);
    search(5);
    expectStaging(0x0FFF, 5, 1, 0x3332, 0x3333, 0x0333);
}

TEST_F(VtuTest, AfterAMissPortsThatNobodyWritesBecomeMembers) {
    search(9);
    write(global1, 0x06, 0x100A);
    write(global1, 0x07, 0x3333);
    write(global1, 0x08, 0x3333);
    write(global1, 0x05, 0xB000);
    EXPECT_EQ(chip().getVtuEntry(10)->memberTags,
              (std::array<unsigned, 11>{3, 3, 3, 3, 3, 3, 3, 3, 0, 0, 0}));
}

TEST_F(VtuTest, ResultsAreThereAtOnceHoweverLongTheUnitIsBusy) {
    loadVtu(5, 5, 1, 0x3333, 0x3333, 0x0333);
    chip().setBusyTime(Unit::vtu, 10'000'000);
    search(4);
    EXPECT_EQ(read(global1, 0x06), 0x1005U);
    EXPECT_EQ(read(global1, 0x05), 0xC000U);
}

TEST_F(VtuTest, FidsHaveTwelveBits) {
    loadVtu(5, 0x1005, 1, 0, 0, 0);
    EXPECT_EQ(chip().getVtuEntry(5)->fid, 5U);
    EXPECT_EQ(read(global1, 0x02), 5U);
}

TEST_F(VtuTest, SidsHaveSixBits) {
    loadVtu(100, 100, 100, 0, 0, 0);
    EXPECT_EQ(chip().getVtuEntry(100)->sid, 36U);
    EXPECT_EQ(read(global1, 0x03), 36U);
    search(99);
    EXPECT_EQ(read(global1, 0x03), 36U);
}

TEST_F(VtuTest, SidsMayHaveTwelveBits) {
    Options options;
    options.sidWidth = Options::SidWidth::bits12;
    rebuild(options);
    loadVtu(100, 100, 4000, 0, 0, 0);
    EXPECT_EQ(chip().getVtuEntry(100)->sid, 4000U);
    search(99);
    EXPECT_EQ(read(global1, 0x03), 4000U);
}

TEST_F(VtuTest, OperationsWithoutMeaning) {
    loadVtu(5, 5, 1, 0, 0, 0);
    write(global1, 0x05, 0x8000);
    write(global1, 0x05, 0xA000);
    write(global1, 0x05, 0x1000);
    EXPECT_EQ(chip().getVtu().size(), 1U);
    EXPECT_EQ(read(global1, 0x06), 0x1005U);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 2U);
}

TEST_F(VtuTest, ViolationsAreFetchedOneByOne) {
    chip().addVtuViolation(0x123, 4, Side::VtuViolation::miss);
    chip().addVtuViolation(0x456, 9, Side::VtuViolation::member);
    EXPECT_EQ(read(global1, 0x00), 0xA820U);
    write(global1, 0x05, 0xF000);
    EXPECT_EQ(read(global1, 0x05), 0x7024U);
    EXPECT_EQ(read(global1, 0x06), 0x0123U);
    write(global1, 0x05, 0xF000);
    EXPECT_EQ(read(global1, 0x05), 0x7049U);
    EXPECT_EQ(read(global1, 0x06), 0x0456U);
    EXPECT_EQ(read(global1, 0x00), 0xA810U);
}

TEST_F(VtuTest, EntriesOfATestAreFound) {
    Side::VtuEntry entry;
    entry.fid = 3;
    entry.memberTags.fill(2);
    chip().setVtuEntry(30, entry);
    search(29);
    expectStaging(0x101E, 3, 0, 0x2222, 0x2222, 0x0222);
    EXPECT_THROW(chip().setVtuEntry(4096, entry), std::out_of_range);
}

} // namespace
