#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390VlanTest : public Vsc7390Fixture {};

TEST_F(Vsc7390VlanTest, Vid10AfterAClear) {
    clearVlans();
    EXPECT_EQ(readVlan(10), 0x07FFFFFCU);
    writeAnalyser(0xE0, 10);
    writeAnalyser(0xD0, 0x10000022);
    EXPECT_EQ(readAnalyser(0xD0), 0x10000020U);
    TestSide::VlanEntry const entry = chip().getVlanEntry(10);
    EXPECT_EQ(entry.ports, 0x8U);
    EXPECT_TRUE(entry.sourceCheck);
    EXPECT_FALSE(entry.mirror);
    EXPECT_FALSE(entry.learnDisabled);
    EXPECT_EQ(chip().getVlans().size(), 1U);
    EXPECT_EQ(readVlan(10), 0x10000020U);
    EXPECT_EQ(readVlan(11), 0x07FFFFFCU);
}

TEST_F(Vsc7390VlanTest, ReadIgnoresTheUpperBitsOfItsWord) {
    writeVlan(10, 0x10000020);
    writeAnalyser(0xE0, 10);
    writeAnalyser(0xD0, 0xFFFFFFFD);
    EXPECT_EQ(readAnalyser(0xD0), 0x10000020U);
    EXPECT_EQ(chip().getVlanEntry(10).ports, 0x8U);
}

TEST_F(Vsc7390VlanTest, AnEntryKeepsMaskAndFlagsOnly) {
    writeVlan(5, 0xFFFFFFFC);
    EXPECT_EQ(readAnalyser(0xD0), 0xFFFFFFFCU) << "the register itself keeps the word";
    EXPECT_EQ(readVlan(5), 0x77FFFFFCU) << "31 and 27 are in no entry";
    TestSide::VlanEntry const entry = chip().getVlanEntry(5);
    EXPECT_EQ(entry.ports, 0x01FFFFFFU);
    EXPECT_TRUE(entry.sourceCheck);
    EXPECT_TRUE(entry.mirror);
    EXPECT_TRUE(entry.learnDisabled);
}

TEST_F(Vsc7390VlanTest, ClearMakesEveryPortAMemberOfEveryVlan) {
    writeVlan(0, 0x10000004);
    writeVlan(4095, 0x70000004);
    clearVlans();
    EXPECT_EQ(readVlan(0), 0x07FFFFFCU);
    EXPECT_EQ(readVlan(4095), 0x07FFFFFCU);
    EXPECT_TRUE(chip().getVlans().empty());
}

TEST_F(Vsc7390VlanTest, ClearCanLeaveNoMembers) {
    Options options;
    options.vlanClear = Options::VlanClear::noMembers;
    rebuild(options);
    writeVlan(4095, 0x70000004);
    clearVlans();
    EXPECT_EQ(readVlan(4095), 0U);
}

TEST_F(Vsc7390VlanTest, ClearTakesFiftyMicroseconds) {
    writeAnalyser(0xD0, 3);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 3U);
    advance(49'999);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 3U);
    advance(1);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 0U);
}

TEST_F(Vsc7390VlanTest, ReadAndWriteTakeNoTime) {
    writeAnalyser(0xD0, 1);
    EXPECT_EQ(chip().peek("analyser", 0xD0) & 3, 0U);
    writeAnalyser(0xD0, 2);
    EXPECT_EQ(chip().peek("analyser", 0xD0) & 3, 0U);
}

TEST_F(Vsc7390VlanTest, TimesAreOptions) {
    Options options;
    options.vlanAccessNanoseconds = 700;
    options.vlanClearNanoseconds = 0;
    rebuild(options);
    writeAnalyser(0xD0, 3);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 0U);
    writeAnalyser(0xD0, 0x12);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 0x12U);
    advance(700);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 0x10U);
}

TEST_F(Vsc7390VlanTest, TheIndexIsTakenWhenTheCommandStarts) {
    chip().setBusyTime(Unit::vlanTable, 10'000);
    writeAnalyser(0xE0, 10);
    writeAnalyser(0xD0, 0x10000022);
    writeAnalyser(0xE0, 11);
    EXPECT_EQ(chip().peek("analyser", 0xD0), 0x10000022U) << "still at work";
    EXPECT_TRUE(vlanTableIdles());
    EXPECT_EQ(chip().getVlanEntry(10).ports, 0x8U);
    EXPECT_EQ(chip().getVlanEntry(11).ports, 0x01FFFFFFU);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390VlanTest, IdleIsNoCommand) {
    writeAnalyser(0xD0, 0x10000020);
    EXPECT_EQ(readAnalyser(0xD0), 0x10000020U);
    EXPECT_EQ(chip().getCommands(Unit::vlanTable), 0U);
    EXPECT_TRUE(chip().getVlans().empty());
}

TEST_F(Vsc7390VlanTest, TheIndexHasTwelveBits) {
    writeAnalyser(0xE0, 0x100A);
    EXPECT_EQ(readAnalyser(0xE0), 0x00AU);
}

TEST_F(Vsc7390VlanTest, EntriesByTheTestSide) {
    chip().setVlanEntry(7, {0x00800001, false, true, true});
    EXPECT_EQ(readVlan(7), 0x62000004U);
    EXPECT_THROW(chip().getVlanEntry(4096), std::out_of_range);
    EXPECT_THROW(chip().setVlanEntry(4096, {}), std::out_of_range);
}

TEST_F(Vsc7390VlanTest, AVlanOfAllFrontPortsIsNotAClearedOne) {
    writeVlan(9, 0x13FFFFFC);
    EXPECT_EQ(readVlan(9), 0x13FFFFFCU);
    EXPECT_EQ(chip().getVlanEntry(9).ports, 0x00FFFFFFU);
}

} // namespace
