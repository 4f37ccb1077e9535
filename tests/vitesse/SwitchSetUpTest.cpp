#include "tests/vitesse/SwitchTest.hpp"

using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

class SwitchSetUpTest : public SwitchTest {
protected:
    SwitchSetUpTest() : SwitchTest(0) {}
};

TEST_F(SwitchSetUpTest, SetsOneBitAndKeepsTheOthers) {
    script.expect(
        {writes(2, 0, 0x20, 0x00000004), reads(2, 0, 0xA0, 0x8000FFFF), writes(2, 0, 0xA0, 0x8001FFFF)});
    EXPECT_TRUE(chip.initialiseSetup());
    script.expect(
        {writes(2, 0, 0x20, 0x00000004), reads(2, 0, 0xA0, 0x00010000), writes(2, 0, 0xA0, 0x00010000)});
    EXPECT_TRUE(chip.initialiseSetup());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SwitchSetUpTest, FailedBusAccessesAreReportedAndCountAsZero) {
    script.expect({writes(2, 0, 0x20, 0x00000004).failing(), reads(2, 0, 0xA0, 0x8000FFFF).failing(),
                   writes(2, 0, 0xA0, 0x00010000).failing()});
    EXPECT_TRUE(chip.initialiseSetup());
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|Failed Write : address f3008080\n", "error|Failed Read : address f3008280\n",
                     "error|Failed Write : address f3008280\n"}));
}

TEST_F(SwitchSetUpTest, OnlyTheLastWriteCounts) {
    ReportedFailures const reported(script);
    script.expect({writes(2, 0, 0x20, 0x00000004).failing(), reads(2, 0, 0xA0, 0x8000FFFF).failing(),
                   writes(2, 0, 0xA0, 0x00010000)});
    EXPECT_TRUE(chip.initialiseSetup());
    script.expect({writes(2, 0, 0x20, 0x00000004), reads(2, 0, 0xA0, 0x8000FFFF),
                   writes(2, 0, 0xA0, 0x8001FFFF).failing()});
    EXPECT_FALSE(chip.initialiseSetup());
}

TEST_F(SwitchSetUpTest, PhysAreReachedThroughTheSecondController) {
    unsigned short value = 0;
    script.expect(
        {reads(3, 1, 0, 0), writes(3, 1, 1, 0x04620000), reads(3, 1, 0, 0), reads(3, 1, 2, 0x0000ABCD)});
    EXPECT_TRUE(chip.phyReadRegister(3, 2, value));
    EXPECT_EQ(value, 0xABCD);
    script.expect({reads(3, 1, 0, 0), writes(3, 1, 1, 0x0062BEEF)});
    EXPECT_TRUE(chip.phyWriteRegister(3, 2, 0xBEEF));
}

TEST_F(SwitchSetUpTest, TimeDifferencesBorrowASecond) {
    auto const difference = [](timespec start, timespec end) {
        return VitesseSwitch::clock_timediff(start, end);
    };
    EXPECT_EQ(difference({1, 0}, {3, 5}).tv_sec, 2);
    EXPECT_EQ(difference({1, 0}, {3, 5}).tv_nsec, 5);
    EXPECT_EQ(difference({1, 6}, {3, 5}).tv_sec, 1);
    EXPECT_EQ(difference({1, 6}, {3, 5}).tv_nsec, 999'999'999);
    EXPECT_EQ(difference({1, 999'999'999}, {2, 0}).tv_sec, 0);
    EXPECT_EQ(difference({1, 999'999'999}, {2, 0}).tv_nsec, 1);
    EXPECT_EQ(difference({7, 7}, {7, 7}).tv_sec, 0);
    EXPECT_EQ(difference({7, 7}, {7, 7}).tv_nsec, 0);
}

} // namespace
