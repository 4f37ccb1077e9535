#include <chrono>

#include "tests/vitesse/MulticastTables.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using namespace multicast;
using namespace std::chrono_literals;
using test_support::Lines;

namespace {

Lines const timeout{"1|VitesseSwitch::waitForMacTableReady                          "
                    "Timeout waiting for Mac Table to be ready\n"};

class MulticastSearchTest : public SwitchTest {
protected:
    MulticastSearchTest() : SwitchTest(0) {}

    bool find() { return chip.findMulticastGroup(mac, 10); }
    bool findUseable() { return chip.findMulticastGroupUseableBucket(mac, 10); }

    void expectNotFound(Accesses const& table) {
        script.expect(table);
        EXPECT_FALSE(find());
        script.verify();
        EXPECT_EQ(bench.log.take(), Lines{});
    }
};

TEST_F(MulticastSearchTest, FindsAGroupInEveryBucket) {
    Accesses before;
    for (unsigned int bucket = 0; bucket < 4; ++bucket) {
        SCOPED_TRACE(bucket);
        expectSuccess(script, before + bucketOf(bucket, 0xAB010102) + select(bucket), [&] { return find(); });
        before = before + bucketOf(bucket, otherGroup);
    }
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MulticastSearchTest, PassesEmptyBuckets) {
    expectSuccess(script, emptyBucket(0) + emptyBucket(1) + bucketOf(2, thisGroup) + select(2),
                  [&] { return find(); });
}

TEST_F(MulticastSearchTest, GivesUpAfterTheFourthBucket) {
    expectNotFound(emptyRow());
    expectNotFound(rowOfOthers());
    expectNotFound(bucketOf(0, otherGroup) + emptyBucket(1) + bucketOf(2, otherGroup) + emptyBucket(3));
}

TEST_F(MulticastSearchTest, ComparesThreeBytes) {
    expectNotFound(bucketOf(0, 0x00010103) + bucketOf(1, 0x00010002) + bucketOf(2, 0x00000102) +
                   bucketOf(3, 0x00010182));
    expectSuccess(script, foundFirst(0xFF010102), [&] { return find(); });
}

TEST_F(MulticastSearchTest, OtherVlansOfTheSameRowAreTakenForTheSameGroup) {
    expectSuccess(script, foundFirst(), [&] { return chip.findMulticastGroup(mac, 0x0FCA); });
}

TEST_F(MulticastSearchTest, TheRowIsCutToElevenBits) {
    unsigned char const other[] = {0x56, 0x34, 0x12, 0xC1, 0x01, 0x00};
    script.expect({writes(2, 0, 0xC0, 0x00000144), reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 6),
                   reads(2, 0, 0xB0, 0), reads(2, 0, 0xB0, 0x400), reads(2, 0, 0x07, 0x00123456),
                   writes(2, 0, 0xC0, 0x00000144)});
    EXPECT_TRUE(chip.findMulticastGroup(other, 5));
}

TEST_F(MulticastSearchTest, EndsAtAnIndexOrDataThatFails) {
    ReportedFailures const reported(script);
    expectEachFailureStops(script, foundFirst(), [&] { return find(); }, {1, 2, 3, 4});
}

TEST_F(MulticastSearchTest, ACommandThatFailsCountsAsAnEmptyBucket) {
    ReportedFailures const reported(script);
    script.expect(select(0) + Accesses{reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 6).failing()} +
                  bucketOf(1, thisGroup) + select(1));
    EXPECT_TRUE(find());
}

TEST_F(MulticastSearchTest, ATableThatStaysBusyCountsAsEmptyBuckets) {
    Accesses busyRow;
    for (unsigned int bucket = 0; bucket < 4; ++bucket) {
        busyRow = busyRow + select(bucket) + Accesses{reads(2, 0, 0xB0, 6).taking(1s)};
    }
    script.expect(busyRow);
    EXPECT_FALSE(find());
    EXPECT_EQ(bench.log.take(), (Lines{timeout[0], timeout[0], timeout[0], timeout[0]}));
}

TEST_F(MulticastSearchTest, AGroupThatIsThereHasItsBucket) {
    expectSuccess(script, bucketOf(0, otherGroup) + bucketOf(1, thisGroup) + select(1),
                  [&] { return findUseable(); });
}

TEST_F(MulticastSearchTest, TheFirstFreeBucketWins) {
    expectSuccess(script, foundEmptyRow(), [&] { return findUseable(); });
    expectSuccess(script,
                  bucketOf(0, otherGroup) + bucketOf(1, otherGroup) + emptyBucket(2) + emptyBucket(3) +
                      select(0) + readEntry(true) + select(1) + readEntry(true) + emptyBucket(2) + select(2),
                  [&] { return findUseable(); });
    expectSuccess(script,
                  bucketOf(0, otherGroup) + bucketOf(1, otherGroup) + bucketOf(2, otherGroup) +
                      emptyBucket(3) + select(0) + readEntry(true) + select(1) + readEntry(true) + select(2) +
                      readEntry(true) + emptyBucket(3) + select(3),
                  [&] { return findUseable(); });
}

TEST_F(MulticastSearchTest, AFullRowHasNoUseableBucket) {
    script.expect(rowOfOthers() + select(0) + readEntry(true) + select(1) + readEntry(true) + select(2) +
                  readEntry(true) + select(3) + readEntry(true));
    EXPECT_FALSE(findUseable());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MulticastSearchTest, TheSearchForAFreeBucketEndsAtAnIndexThatFails) {
    ReportedFailures const reported(script);
    Accesses const selectAgain{writes(2, 0, 0xC0, indexWord[0]).failing()};
    script.expect(emptyRow() + selectAgain);
    EXPECT_FALSE(findUseable());
    script.expect(emptyRow() + emptyBucket(0) + selectAgain);
    EXPECT_FALSE(findUseable());
    script.expect(emptyRow() + select(0) + readEntry(true) +
                  Accesses{writes(2, 0, 0xC0, indexWord[1]).failing()});
    EXPECT_FALSE(findUseable());
}

/// A switch whose table commands are overridden: which entries are valid is told here.
class SwitchWithOwnCommands : public VitesseSwitch {
public:
    using VitesseSwitch::VitesseSwitch;

    bool macTableCommand(MacAddressCommand command) override {
        EXPECT_EQ(static_cast<unsigned int>(command), 6U);
        return _valid;
    }

    void entriesAre(bool valid) { _valid = valid; }

private:
    bool _valid = false;
};

class MulticastSearchByOverrideTest : public SwitchTestOf<SwitchWithOwnCommands> {
protected:
    MulticastSearchByOverrideTest() : SwitchTestOf(0) {}
};

TEST_F(MulticastSearchByOverrideTest, SearchesRunCommandsThroughTheOverride) {
    Accesses const row = select(0) + select(1) + select(2) + select(3);
    script.expect(row);
    EXPECT_FALSE(chip.findMulticastGroup(mac, 10));
    script.expect(row + select(0) + select(0));
    EXPECT_TRUE(chip.findMulticastGroupUseableBucket(mac, 10));
    chip.entriesAre(true);
    script.expect(select(0) + Accesses{reads(2, 0, 0x07, thisGroup)} + select(0));
    EXPECT_TRUE(chip.findMulticastGroup(mac, 10));
}

} // namespace
