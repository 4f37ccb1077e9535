#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

/// Commands of the MAC table, and the flags that go with them.
constexpr unsigned learnEntry = 1;
constexpr unsigned forgetEntry = 2;
constexpr unsigned ageTable = 3;
constexpr unsigned flushTable = 4;
constexpr unsigned clearTable = 5;
constexpr unsigned writeEntry = 7;
constexpr unsigned locked = 0x200;
constexpr unsigned valid = 0x400;
constexpr unsigned aged = 0x800;

/// Address 00:00:00:00:00:05 in VLAN 1, which is in row 0x005 ^ 0x010; those after it are in the same
/// row because bits eleven apart fall on each other.
constexpr unsigned row = 0x015;
constexpr std::uint64_t sameRow[] = {0x005, 0x005 ^ 0x0801, 0x005 ^ 0x1002, 0x005 ^ 0x2004, 0x005 ^ 0x4008};
constexpr unsigned vid1 = 0x00010000;

class Vsc7390MacTableTest : public Vsc7390Fixture {
protected:
    void learn(std::uint64_t mac, unsigned flags) {
        commandMac(flags | learnEntry, vid1, static_cast<unsigned>(mac));
    }

    std::uint64_t macIn(unsigned bucket) {
        auto const entry = chip().getMacEntry(row, bucket);
        return entry ? entry->mac : ~std::uint64_t{0};
    }
};

TEST_F(Vsc7390MacTableTest, Rows) {
    EXPECT_EQ(chip().getRow(0x01005E010102, 1), 0x0CAU);
    EXPECT_EQ(chip().getRow(0x01005E010102, 10), 0x07AU);
    EXPECT_EQ(chip().getRow(0x01005E010102, 74), 0x07AU);
    EXPECT_EQ(chip().getRow(0xFFFFFFFFFFFF, 1), 0x01FU);
    for (std::uint64_t mac : sameRow) {
        EXPECT_EQ(chip().getRow(mac, 1), row) << mac;
    }
    EXPECT_EQ(chip().getRow(0, 0x3F), 0x3F0U);
    EXPECT_EQ(chip().getRow(0, 0x40), 0x000U);
    EXPECT_EQ(chip().getRow(std::uint64_t{0x8} << 44, 0), 0x008U);
}

TEST_F(Vsc7390MacTableTest, WriteAndReadByIndex) {
    writeMac(0x10CA, 0x0001AABB, 0xCCDDEEFF, 0x000 | valid | 0x28 | writeEntry);
    EXPECT_EQ(readAnalyser(0xB0), 0x428U) << "VALID as written";
    auto const entry = chip().getMacEntry(0x0CA, 2);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->mac, 0xAABBCCDDEEFFU);
    EXPECT_EQ(entry->vid, 1U);
    EXPECT_EQ(entry->destination, 5U);
    EXPECT_FALSE(entry->isMulticast());
    writeAnalyser(0x06, 0);
    writeAnalyser(0x07, 0);
    EXPECT_EQ(readMac(0x10CA), 0x428U);
    EXPECT_EQ(readAnalyser(0x06), 0x0001AABBU);
    EXPECT_EQ(readAnalyser(0x07), 0xCCDDEEFFU);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
}

TEST_F(Vsc7390MacTableTest, EveryFlagIsKept) {
    writeMac(0x0000, 0x0FFF1234, 0x56789ABC, 0x7FF8 | writeEntry);
    auto const entry = chip().getMacEntry(0, 0);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->vid, 0xFFFU);
    EXPECT_EQ(entry->destination, 63U);
    EXPECT_TRUE(entry->locked);
    EXPECT_TRUE(entry->aged);
    EXPECT_TRUE(entry->ignoreVlan);
    EXPECT_TRUE(entry->forwardKill);
    EXPECT_TRUE(entry->cpuCopy);
    EXPECT_EQ(readMac(0x0000), 0x7FF8U);
}

TEST_F(Vsc7390MacTableTest, AnEmptyBucketReadsZero) {
    writeAnalyser(0x06, 0x00010001);
    writeAnalyser(0x07, 0x12345678);
    EXPECT_EQ(readMac(0x18CA), 0U);
    EXPECT_EQ(readAnalyser(0x06), 0U);
    EXPECT_EQ(readAnalyser(0x07), 0U);
}

TEST_F(Vsc7390MacTableTest, AWriteWithoutValidEmptiesTheBucket) {
    writeMac(0x00CA, vid1, 1, valid | writeEntry);
    writeMac(0x00CA, vid1, 2, writeEntry);
    EXPECT_EQ(readAnalyser(0xB0), 0U);
    EXPECT_FALSE(chip().getMacEntry(0x0CA, 0).has_value());
    readMac(0x00CA);
    EXPECT_EQ(readAnalyser(0x07), 0U);
}

TEST_F(Vsc7390MacTableTest, TheIndexMayBeRewrittenBetweenReadAndData) {
    writeMac(0x08CA, vid1, 0x01010102, valid | writeEntry);
    writeAnalyser(0x07, 0);
    writeAnalyser(0xC0, 0x08CA);
    writeAnalyser(0xB0, 6);
    writeAnalyser(0xC0, 0x18CA);
    EXPECT_EQ(readAnalyser(0x06), vid1);
    EXPECT_EQ(readAnalyser(0x07), 0x01010102U);
}

TEST_F(Vsc7390MacTableTest, TheShadowBitMakesNoDifference) {
    writeMac(0x08CA, vid1, 0x01010102, valid | writeEntry);
    EXPECT_EQ(readMac(0x28CA), valid);
    EXPECT_EQ(readAnalyser(0xC0), 0x28CAU);
    EXPECT_EQ(readAnalyser(0x07), 0x01010102U);
}

TEST_F(Vsc7390MacTableTest, LearnTakesEmptyBucketsFirst) {
    for (unsigned i = 0; i < 4; ++i) {
        learn(sameRow[i], valid | i << 3);
    }
    for (unsigned bucket = 0; bucket < 4; ++bucket) {
        EXPECT_EQ(macIn(bucket), sameRow[bucket]);
        EXPECT_EQ(chip().getMacEntry(row, bucket)->destination, bucket);
    }
}

TEST_F(Vsc7390MacTableTest, LearnMakesTheEntryValid) {
    learn(sameRow[0], 0x18);
    EXPECT_EQ(readMac(row), valid | 0x18);
}

TEST_F(Vsc7390MacTableTest, LearnReplacesTheSameAddress) {
    learn(sameRow[0], valid);
    learn(sameRow[1], valid);
    learn(sameRow[0], valid | 0x38);
    EXPECT_EQ(chip().getMacEntry(row, 0)->destination, 7U);
    EXPECT_EQ(chip().getMacTable().size(), 2U);
}

TEST_F(Vsc7390MacTableTest, LearnTakesAnAgedBucketOfAFullRow) {
    for (unsigned i = 0; i < 4; ++i) {
        learn(sameRow[i], i == 2 ? valid | aged : valid);
    }
    learn(sameRow[4], valid);
    EXPECT_EQ(macIn(2), sameRow[4]);
    EXPECT_EQ(macIn(0), sameRow[0]);
}

TEST_F(Vsc7390MacTableTest, LearnGoesRoundAFullRow) {
    for (unsigned i = 0; i < 4; ++i) {
        learn(sameRow[i], i == 1 ? valid | locked : valid);
    }
    learn(sameRow[4], valid);
    EXPECT_EQ(macIn(0), sameRow[4]);
    learn(sameRow[0], valid);
    EXPECT_EQ(macIn(1), sameRow[1]) << "locked";
    EXPECT_EQ(macIn(2), sameRow[0]);
}

TEST_F(Vsc7390MacTableTest, LearnLeavesARowOfLockedEntriesAlone) {
    for (unsigned i = 0; i < 4; ++i) {
        learn(sameRow[i], valid | locked);
    }
    learn(sameRow[4], valid);
    EXPECT_FALSE(chip().learn(sameRow[4], 1, 5));
    for (unsigned bucket = 0; bucket < 4; ++bucket) {
        EXPECT_EQ(macIn(bucket), sameRow[bucket]);
    }
}

TEST_F(Vsc7390MacTableTest, ForgetDeletesOneEntryLockedOrNot) {
    learn(sameRow[0], valid | locked);
    learn(sameRow[1], valid);
    commandMac(forgetEntry, vid1, static_cast<unsigned>(sameRow[0]));
    EXPECT_FALSE(chip().getMacEntry(row, 0).has_value());
    commandMac(forgetEntry, 0x00020000, static_cast<unsigned>(sameRow[1]));
    EXPECT_TRUE(chip().getMacEntry(row, 1).has_value()) << "another VLAN's";
}

TEST_F(Vsc7390MacTableTest, AgeMarksThenDeletes) {
    learn(sameRow[0], valid);
    learn(sameRow[1], valid | locked);
    commandMac(ageTable);
    EXPECT_TRUE(chip().getMacEntry(row, 0)->aged);
    EXPECT_FALSE(chip().getMacEntry(row, 1)->aged);
    advance(50'000);
    commandMac(ageTable);
    EXPECT_FALSE(chip().getMacEntry(row, 0).has_value());
    EXPECT_TRUE(chip().getMacEntry(row, 1).has_value());
}

TEST_F(Vsc7390MacTableTest, NothingAgesByItself) {
    learn(sameRow[0], valid);
    advance(600'000'000'000);
    EXPECT_FALSE(chip().getMacEntry(row, 0)->aged);
}

TEST_F(Vsc7390MacTableTest, ClearDeletesAll) {
    learn(sameRow[0], valid | locked);
    writeMac(0x1FFF, vid1, 1, valid | locked | aged | writeEntry);
    commandMac(clearTable);
    EXPECT_TRUE(chip().getMacTable().empty());
}

TEST_F(Vsc7390MacTableTest, FlushDeletesWhatIsNotLocked) {
    learn(sameRow[0], valid);
    learn(sameRow[1], valid | locked);
    writeMac(0x18CA, 0x00011002, 0x01010102, 0x1E07);
    commandMac(flushTable);
    EXPECT_EQ(readAnalyser(0xB0) & 7, 0U);
    EXPECT_EQ(chip().getMacTable().size(), 2U);
    EXPECT_EQ(macIn(1), sameRow[1]);
    EXPECT_TRUE(chip().getMacEntry(0x0CA, 3)->isMulticast());
}

TEST_F(Vsc7390MacTableTest, FlushCanBeWithoutEffect) {
    Options options;
    options.macFlush = Options::MacFlush::noEffect;
    rebuild(options);
    learn(sameRow[0], valid);
    commandMac(flushTable);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
}

TEST_F(Vsc7390MacTableTest, LearnMovesALockedEntryOfTheSameAddressButAFrameDoesNot) {
    learn(sameRow[0], valid | locked | 0x18);
    learn(sameRow[0], valid | locked | 0x28);
    EXPECT_EQ(chip().getMacEntry(row, 0)->destination, 5U);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
    EXPECT_FALSE(chip().learn(sameRow[0], 1, 9));
    EXPECT_EQ(chip().getMacEntry(row, 0)->destination, 5U);
    learn(sameRow[0], valid | 0x38);
    EXPECT_FALSE(chip().getMacEntry(row, 0)->locked);
    EXPECT_TRUE(chip().learn(sameRow[0], 1, 9)) << "no longer locked";
}

TEST_F(Vsc7390MacTableTest, LearnCanLeaveLockedEntriesAlone) {
    Options options;
    options.learnOverLocked = Options::LearnOverLocked::leaves;
    rebuild(options);
    learn(sameRow[0], valid | locked | 0x18);
    learn(sameRow[0], valid | locked | 0x28);
    EXPECT_EQ(chip().getMacEntry(row, 0)->destination, 3U);
}

TEST_F(Vsc7390MacTableTest, AgeAndClearTakeFiftyMicroseconds) {
    for (unsigned command : {ageTable, clearTable}) {
        commandMac(command);
        advance(49'999);
        EXPECT_EQ(chip().peek("analyser", 0xB0), command);
        advance(1);
        EXPECT_EQ(chip().peek("analyser", 0xB0), 0U);
    }
    for (unsigned command : {learnEntry, forgetEntry, flushTable, 6U, writeEntry}) {
        commandMac(command);
        EXPECT_EQ(chip().peek("analyser", 0xB0), 0U) << command;
    }
}

TEST_F(Vsc7390MacTableTest, TheVidHasTwelveBits) {
    writeMac(0, 0xF0010000, 1, valid | writeEntry);
    EXPECT_EQ(chip().getMacEntry(0, 0)->vid, 1U);
}

TEST_F(Vsc7390MacTableTest, EntriesByTheTestSide) {
    EXPECT_TRUE(chip().learn(sameRow[0], 1, 12));
    EXPECT_EQ(readMac(row), valid | 12U << 3);
    EXPECT_EQ(readAnalyser(0x07), 5U);
    TestSide::MacEntry entry;
    entry.mac = 0x112233445566;
    entry.vid = 7;
    entry.destination = 3;
    entry.locked = true;
    chip().setMacEntry(0x7FF, 3, entry);
    EXPECT_EQ(readMac(0x1FFF), valid | locked | 0x18);
    EXPECT_EQ(readAnalyser(0x06), 0x00071122U);
    EXPECT_EQ(readAnalyser(0x07), 0x33445566U);
    EXPECT_EQ(chip().getMacTable().count(TestSide::MacPlace(0x7FF, 3)), 1U);
    chip().removeMacEntry(0x7FF, 3);
    EXPECT_FALSE(chip().getMacEntry(0x7FF, 3).has_value());
    EXPECT_THROW(chip().getMacEntry(2048, 0), std::out_of_range);
    EXPECT_THROW(chip().setMacEntry(0, 4, entry), std::out_of_range);
    EXPECT_THROW(chip().removeMacEntry(0, 4), std::out_of_range);
    EXPECT_THROW(chip().learn(0, 4096, 0), std::out_of_range);
    EXPECT_THROW(chip().learn(0, 1, 24), std::out_of_range);
}

} // namespace
