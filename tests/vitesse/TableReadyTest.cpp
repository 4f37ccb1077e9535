#include <chrono>

#include "tests/vitesse/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::Lines;
using test_support::reads;

namespace {

/// The waits for the VLAN table and for the MAC table, which only differ in register and message.
struct Table {
    char const* name;
    unsigned int address;
    unsigned int busyBits;
    bool (VitesseSwitch::*isIdle)();
    bool (VitesseSwitch::*wait)();
    char const* timeout;
};

Table const tables[] = {
    {"vlan", 0xD0, 0x3, &VitesseSwitch::isVlanTableIdle, &VitesseSwitch::waitforVlanTableReady,
     "1|VitesseSwitch::waitforVlanTableReady                          "
     "Timeout waiting for Vlan Table Busy Bit :Elapsed 1.000000 : vlanTimeout 1.000000\n"},
    {"mac", 0xB0, 0x7, &VitesseSwitch::isMacTableIdle, &VitesseSwitch::waitForMacTableReady,
     "1|VitesseSwitch::waitForMacTableReady                          "
     "Timeout waiting for Mac Table to be ready\n"}};

class TableReadyTest : public SwitchTest, public testing::WithParamInterface<Table> {
protected:
    TableReadyTest() : SwitchTest(0) {}

    void expectReady(Accesses const& polls) {
        script.expect(polls);
        EXPECT_TRUE((chip.*GetParam().wait)());
        script.verify();
        EXPECT_EQ(bench.log.take(), Lines{});
    }

    void expectTimeout(Accesses const& polls) {
        script.expect(polls);
        EXPECT_FALSE((chip.*GetParam().wait)());
        script.verify();
        EXPECT_EQ(bench.log.take(), (Lines{GetParam().timeout}));
    }

    Access const idle = reads(2, 0, GetParam().address, ~GetParam().busyBits);
    Access const busy = reads(2, 0, GetParam().address, 0x00000002);
};

TEST_P(TableReadyTest, EachCommandBitMeansBusy) {
    script.expect({idle});
    EXPECT_TRUE((chip.*GetParam().isIdle)());
    for (unsigned int bit = 1; bit <= GetParam().busyBits; bit <<= 1) {
        script.expect({reads(2, 0, GetParam().address, bit)});
        EXPECT_FALSE((chip.*GetParam().isIdle)()) << bit;
    }
    script.expect({reads(2, 0, GetParam().address, GetParam().busyBits + 1)});
    EXPECT_TRUE((chip.*GetParam().isIdle)());
}

TEST_P(TableReadyTest, AFailedReadCountsAsBusy) {
    ReportedFailures const reported(script);
    script.expect({idle.failing()});
    EXPECT_FALSE((chip.*GetParam().isIdle)());
    script.expect({idle.failing(), idle.failing(), idle});
    EXPECT_TRUE((chip.*GetParam().wait)());
}

TEST_P(TableReadyTest, ReturnsAtOnceWhenItIsIdle) {
    expectReady({idle});
    EXPECT_EQ(bench.clock.getNanoseconds(), 0U);
}

TEST_P(TableReadyTest, SleepsAHundredMicrosecondsBetweenPolls) {
    expectReady({busy, busy, busy, idle});
    EXPECT_EQ(bench.clock.getNanoseconds(), 300'000U);
}

TEST_P(TableReadyTest, GivesUpAfterTenThousandSleeps) {
    expectTimeout(Accesses(10'001, busy));
    EXPECT_EQ(bench.clock.getNanoseconds(), 1'000'000'000U);
}

TEST_P(TableReadyTest, ATableThatGetsIdleAtTheLastPollIsReady) {
    expectReady(Accesses(10'000, busy) + Accesses{idle});
}

TEST_P(TableReadyTest, GivesUpOnlyAfterAWholeSecond) {
    expectReady({busy.taking(999'999'999ns), idle});
    expectTimeout({busy.taking(1s)});
    expectTimeout({busy.taking(999'900'000ns), busy});
    expectTimeout({busy.taking(999'899'999ns), busy, busy});
}

TEST_P(TableReadyTest, ATableThatIsIdleAtTheFirstPollIsReadyHoweverLongThatTakes) {
    expectReady({idle.taking(5s)});
}

TEST_P(TableReadyTest, TheSecondOfTheWallClockDoesNotMatter) {
    bench.clock.setWallClockPhase(999'999'999);
    expectReady({busy.taking(1ns), busy.taking(500ms), idle});
}

INSTANTIATE_TEST_SUITE_P(Tables, TableReadyTest, testing::ValuesIn(tables),
                         [](auto const& instance) { return std::string(instance.param.name); });

} // namespace
