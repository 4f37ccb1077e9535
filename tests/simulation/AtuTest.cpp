#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class AtuTest : public BoardFixture {
protected:
    void stageMac(unsigned high, unsigned middle, unsigned low) {
        write(global1, 0x0D, high);
        write(global1, 0x0E, middle);
        write(global1, 0x0F, low);
    }

    void load(unsigned fid, unsigned macLow, unsigned data, unsigned macHigh = 0x0050) {
        write(global1, 0x01, fid);
        stageMac(macHigh, 0xC200, macLow);
        write(global1, 0x0C, data);
        write(global1, 0x0B, 0xB000);
    }

    /// Data of the entry, 0 when there is none.
    unsigned find(unsigned fid, unsigned macLow, unsigned macHigh = 0x0050) {
        write(global1, 0x01, fid);
        stageMac(macHigh, 0xC200, macLow - 1);
        write(global1, 0x0B, 0xC000);
        return read(global1, 0x0F) == macLow && read(global1, 0x0D) == macHigh ? read(global1, 0x0C) : 0;
    }

    void advanceSeconds(std::uint64_t seconds) {
        _board->getClock().advanceNanoseconds(seconds * 1'000'000'000);
    }

    void operate(unsigned operation, unsigned data, unsigned fid = 0) {
        write(global1, 0x01, fid);
        write(global1, 0x0C, data);
        write(global1, 0x0B, 0x8000 | operation << 12);
    }
};

TEST_F(AtuTest, LoadGetNextAndPurge) {
    load(1, 0x0020, 0x004E);
    load(1, 0x0010, 0x0025);
    load(2, 0x0015, 0x0017);
    write(global1, 0x01, 1);
    stageMac(0xFFFF, 0xFFFF, 0xFFFF);
    write(global1, 0x0B, 0xC000);
    EXPECT_EQ(read(global1, 0x0D), 0x0050U);
    EXPECT_EQ(read(global1, 0x0E), 0xC200U);
    EXPECT_EQ(read(global1, 0x0F), 0x0010U);
    EXPECT_EQ(read(global1, 0x0C), 0x0025U);
    write(global1, 0x0B, 0xC000);
    EXPECT_EQ(read(global1, 0x0F), 0x0020U);
    write(global1, 0x0B, 0xC000);
    EXPECT_EQ(read(global1, 0x0F), 0xFFFFU);
    EXPECT_EQ(read(global1, 0x0C), 0U);
    load(1, 0x0010, 0x0020);
    EXPECT_EQ(find(1, 0x0010), 0U);
    EXPECT_EQ(find(1, 0x0020), 0x004EU);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(AtuTest, FlushAll) {
    load(1, 0x0020, 0x004E);
    load(2, 0x0010, 0x0025);
    operate(1, 0);
    EXPECT_EQ(find(1, 0x0020), 0U);
    EXPECT_EQ(find(2, 0x0010), 0U);
}

TEST_F(AtuTest, FlushNonStaticLeavesStaticsAndGroups) {
    load(1, 0x0020, 0x004E);
    load(2, 0x0010, 0x0025);
    load(2, 0x0030, 0x0027, 0x0100);
    operate(2, 0);
    EXPECT_EQ(find(1, 0x0020), 0x004EU);
    EXPECT_EQ(find(2, 0x0010), 0U);
    EXPECT_EQ(find(2, 0x0030, 0x0100), 0x0027U);
}

TEST_F(AtuTest, FlushOfOneFid) {
    load(1, 0x0020, 0x0045);
    load(2, 0x0010, 0x0025);
    load(2, 0x0012, 0x002E);
    operate(6, 0, 2);
    EXPECT_EQ(find(2, 0x0010), 0U);
    EXPECT_EQ(find(2, 0x0012), 0x002EU);
    operate(5, 0, 2);
    EXPECT_EQ(find(2, 0x0012), 0U);
    EXPECT_EQ(find(1, 0x0020), 0x0045U);
}

TEST_F(AtuTest, MoveFromPort2ToPort5) {
    load(1, 0x0020, 0x0045);
    load(1, 0x0021, 0x0087);
    operate(1, 0x052F);
    EXPECT_EQ(find(1, 0x0020), 0x0205U);
    EXPECT_EQ(find(1, 0x0021), 0x0087U);
}

TEST_F(AtuTest, MoveToPort15Removes) {
    load(1, 0x0020, 0x0045);
    load(1, 0x0021, 0x00C7);
    operate(1, 0x0F2F);
    EXPECT_EQ(find(1, 0x0020), 0U);
    EXPECT_EQ(find(1, 0x0021), 0x0087U);
}

TEST_F(AtuTest, OperationZeroMeansNothing) {
    operate(0, 0);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 1U);
    EXPECT_EQ(read(global1, 0x0B), 0U);
}

// 105 s, so that an entry gets older by one every 15 s. Accesses to registers take less than a second.
TEST_F(AtuTest, UnicastEntriesAgeInSevenSteps) {
    write(global1, 0x0A, 7 << 4);
    load(1, 0x0010, 0x0027);
    advanceSeconds(14);
    EXPECT_EQ(find(1, 0x0010), 0x0027U);
    for (unsigned age = 6; age > 0; --age) {
        advanceSeconds(15);
        EXPECT_EQ(find(1, 0x0010), 0x0020U | age);
    }
    advanceSeconds(15);
    EXPECT_EQ(find(1, 0x0010), 0U);
}

TEST_F(AtuTest, AnEntryGoesOnAtTheAgeItIsLoadedWith) {
    write(global1, 0x0A, 7 << 4);
    load(1, 0x0010, 0x0022);
    advanceSeconds(29);
    EXPECT_EQ(find(1, 0x0010), 0x0021U);
    advanceSeconds(2);
    EXPECT_EQ(find(1, 0x0010), 0U);
}

TEST_F(AtuTest, StaticsAndGroupsDoNotAge) {
    write(global1, 0x0A, 7 << 4);
    load(1, 0x0020, 0x0028);
    load(1, 0x0030, 0x002E);
    load(1, 0x0040, 0x0027, 0x0100);
    advanceSeconds(1'000'000);
    EXPECT_EQ(find(1, 0x0020), 0x0028U);
    EXPECT_EQ(find(1, 0x0030), 0x002EU);
    EXPECT_EQ(find(1, 0x0040, 0x0100), 0x0027U);
}

TEST_F(AtuTest, NothingAgesWithoutAgeTime) {
    write(global1, 0x0A, 0);
    load(1, 0x0010, 0x0021);
    advanceSeconds(1'000'000);
    EXPECT_EQ(find(1, 0x0010), 0x0021U);
}

TEST_F(AtuTest, AnotherAgeTimeKeepsTheAgesSoFar) {
    write(global1, 0x0A, 7 << 4);
    load(1, 0x0010, 0x0027);
    advanceSeconds(46);
    // 210 s, one step in 30 s.
    write(global1, 0x0A, 14 << 4);
    EXPECT_EQ(find(1, 0x0010), 0x0024U);
    advanceSeconds(29);
    EXPECT_EQ(find(1, 0x0010), 0x0024U);
    advanceSeconds(30);
    EXPECT_EQ(find(1, 0x0010), 0x0023U);
}

TEST_F(AtuTest, ThereIsRoomFor8192Addresses) {
    for (unsigned number = 0; number < 0x2000; ++number) {
        chip().poke("global 1", 0x0F, number);
        chip().poke("global 1", 0x0C, 0x002E);
        _board->getMarvell(chipAddress).getUnit("global 1").write(0x0B, 0xB000, 0);
    }
    EXPECT_EQ(read(global1, 0x00) & 0x0008U, 0U);
    load(5, 0x0100, 0x0027);
    EXPECT_EQ(find(5, 0x0100), 0U);
    EXPECT_EQ(read(global1, 0x00) & 0x0008U, 0x0008U);
    write(global1, 0x0B, 0xF000);
    EXPECT_EQ(read(global1, 0x0B), 0x7010U);
    EXPECT_EQ(read(global1, 0x01), 5U);
    EXPECT_EQ(read(global1, 0x0D), 0x0050U);
    EXPECT_EQ(read(global1, 0x0F), 0x0100U);
    EXPECT_EQ(read(global1, 0x0C), 0x000FU);
    EXPECT_EQ(read(global1, 0x00) & 0x0008U, 0U);
    // A flush that leaves statics makes no room here.
    operate(2, 0);
    load(5, 0x0100, 0x0027);
    EXPECT_EQ(find(5, 0x0100), 0U);
    operate(1, 0);
    load(5, 0x0100, 0x0027);
    EXPECT_EQ(find(5, 0x0100), 0x0027U);
}

TEST_F(AtuTest, AgeTimeKeepsTheOtherBits) {
    write(global1, 0x0A, 0xF00F | 0x028 << 4);
    EXPECT_EQ(read(global1, 0x0A), 0xF28FU);
    EXPECT_EQ(chip().getAgeSeconds(), 600U);
    write(global1, 0x0A, 0xF00F);
    EXPECT_EQ(chip().getAgeSeconds(), 0U);
}

} // namespace
