#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

using Options = simulation::Marvell88E6096Options;
using Side = simulation::Marvell88E6096TestSide;
using States = std::array<unsigned, 11>;

class StuTest : public BoardFixture {
protected:
    void search(unsigned sid) {
        write(global1, 0x03, sid);
        write(global1, 0x05, 0xE000);
    }

    void useSidsOfTwelveBits() {
        Options options;
        options.sidWidth = Options::SidWidth::bits12;
        rebuild(options);
    }
};

TEST_F(StuTest, LoadStoresPortStatesOnly) {
    loadStu(7, 0xFB73, 0x3333, 0xF84C);
    auto const entry = chip().getStuEntry(7);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->portStates, (States{0, 1, 2, 3, 0, 0, 0, 0, 3, 1, 2}));
    EXPECT_TRUE(chip().getVtu().empty());
    // The registers go on as they were written.
    EXPECT_EQ(read(global1, 0x07), 0xFB73U);
    EXPECT_EQ(read(global1, 0x09), 0xF84CU);
}

TEST_F(StuTest, LoadIgnoresTheVid) {
    write(global1, 0x03, 7);
    write(global1, 0x06, 0x1ABC);
    write(global1, 0x05, 0xD000);
    EXPECT_TRUE(chip().getStuEntry(7));
    EXPECT_EQ(read(global1, 0x06), 0x1ABCU);
}

TEST_F(StuTest, PurgeDeletes) {
    loadStu(7, 0x4444, 0, 0);
    loadStu(8, 0x4444, 0, 0);
    write(global1, 0x03, 7);
    write(global1, 0x06, 0);
    write(global1, 0x05, 0xD000);
    EXPECT_FALSE(chip().getStuEntry(7));
    EXPECT_TRUE(chip().getStuEntry(8));
}

TEST_F(StuTest, GetNextReplacesTheWholeDataRegisters) {
    loadStu(7, 0xCCCC, 0x4444, 0x0888);
    write(global1, 0x06, 0x0ABC);
    write(global1, 0x02, 0x0123);
    write(global1, 0x07, 0x1111);
    write(global1, 0x08, 0x2222);
    write(global1, 0x09, 0xF333);
    search(6);
    EXPECT_EQ(read(global1, 0x06), 0x1ABCU);
    EXPECT_EQ(read(global1, 0x02), 0x0123U);
    EXPECT_EQ(read(global1, 0x03), 7U);
    EXPECT_EQ(read(global1, 0x07), 0xCCCCU);
    EXPECT_EQ(read(global1, 0x08), 0x4444U);
    EXPECT_EQ(read(global1, 0x09), 0x0888U);
}

// What is staged from a VTU search does not survive an STU search: a driver that mixed the two would
// make every other port an unmodified member.
TEST_F(StuTest, GetNextBetweenVtuSearchAndLoadWouldOpenTheVlan) {
    loadVtu(5, 5, 7, 0x3333, 0x3333, 0x0333);
    loadStu(7, 0xCCCC, 0xCCCC, 0x0CCC);
    write(global1, 0x06, 4);
    write(global1, 0x05, 0xC000);
    search(6);
    write(global1, 0x06, 0x1005);
    write(global1, 0x05, 0xB000);
    EXPECT_EQ(chip().getVtuEntry(5)->memberTags, States{});
}

TEST_F(StuTest, GetNextFrom63StartsAtZero) {
    loadStu(0, 0x4444, 0, 0);
    search(63);
    EXPECT_EQ(read(global1, 0x03), 0U);
    EXPECT_EQ(read(global1, 0x07), 0x4444U);
    EXPECT_EQ(read(global1, 0x06), 0x1000U);
}

TEST_F(StuTest, GetNextThatFindsNothingLeavesZeros) {
    loadStu(7, 0xCCCC, 0xCCCC, 0x0CCC);
    write(global1, 0x06, 0x1ABC);
    write(global1, 0x02, 0x0123);
    search(7);
    EXPECT_EQ(read(global1, 0x06), 0x0ABCU);
    EXPECT_EQ(read(global1, 0x02), 0x0123U);
    EXPECT_EQ(read(global1, 0x03), 0x3FU);
    EXPECT_EQ(read(global1, 0x07), 0U);
    EXPECT_EQ(read(global1, 0x08), 0U);
    EXPECT_EQ(read(global1, 0x09), 0U);
}

TEST_F(StuTest, GetNextThatFindsNothingMayKeepTheStaging) {
    Options options;
    options.searchMiss = Options::SearchMiss::kept;
    rebuild(options);
    loadStu(7, 0xCCCC, 0xCCCC, 0x0CCC);
    search(7);
    EXPECT_EQ(read(global1, 0x06), 0x0000U);
    EXPECT_EQ(read(global1, 0x07), 0xCCCCU);
    EXPECT_EQ(read(global1, 0x09), 0x0CCCU);
}

// A driver that searches for SID 5, finds 9 and then writes 5 without clearing what is staged gives
// SID 5 the states of SID 9.
TEST_F(StuTest, ANewEntryInheritsTheStatesOfTheOneThatWasFound) {
    loadStu(9, 0x4444, 0x4444, 0x0444);
    search(4);
    EXPECT_EQ(read(global1, 0x03), 9U);
    unsigned const data = read(global1, 0x07);
    write(global1, 0x03, 5);
    write(global1, 0x07, data | 0x000C);
    write(global1, 0x06, 0x1005);
    write(global1, 0x05, 0xD000);
    EXPECT_EQ(chip().getStuEntry(5)->portStates, (States{3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST_F(StuTest, VlansEqualModulo64ShareTheirStates) {
    loadStu(36, 0x4444, 0, 0);
    loadStu(100, 0x000C, 0, 0);
    EXPECT_EQ(chip().getStu().size(), 1U);
    EXPECT_EQ(chip().getStuEntry(36)->portStates, (States{3}));
    search(35);
    EXPECT_EQ(read(global1, 0x03), 36U);
    // Searching for 100 starts after 99, which is 35.
    search(99);
    EXPECT_EQ(read(global1, 0x03), 36U);
}

TEST_F(StuTest, WithTwelveBitsEachVlanHasItsOwn) {
    useSidsOfTwelveBits();
    loadStu(36, 0x4444, 0, 0);
    loadStu(100, 0x000C, 0, 0);
    EXPECT_EQ(chip().getStu().size(), 2U);
    search(36);
    EXPECT_EQ(read(global1, 0x03), 100U);
    search(100);
    EXPECT_EQ(read(global1, 0x03), 0x0FFFU);
    EXPECT_EQ(read(global1, 0x06) & 0x1000U, 0U);
    search(0x0FFF);
    EXPECT_EQ(read(global1, 0x03), 36U);
}

TEST_F(StuTest, ResultsAreThereAtOnceHoweverLongTheUnitIsBusy) {
    loadStu(9, 0x4444, 0x4444, 0x0444);
    chip().setBusyTime(Unit::vtu, 10'000'000);
    search(4);
    EXPECT_EQ(read(global1, 0x03), 9U);
    EXPECT_EQ(read(global1, 0x05), 0xE000U);
}

TEST_F(StuTest, EntriesOfATestAreFound) {
    Side::StuEntry entry;
    entry.portStates.fill(2);
    chip().setStuEntry(30, entry);
    search(29);
    EXPECT_EQ(read(global1, 0x03), 30U);
    EXPECT_EQ(read(global1, 0x09), 0x0888U);
    EXPECT_THROW(chip().setStuEntry(64, entry), std::out_of_range);
}

} // namespace
