#include "tests/marvell/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::expectEachFailureStops;
using test_support::expectStrict;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using State = ManagedSwitchPort::PortEnabledStatus;

Lines const stuTimeout{"error|MarvellSwitch::waitVlanTableReady Vlan Table ready timeout\n"};
Lines const outOfBounds{"error|MarvellSwitch::writeSpanningTreeTable Port in map out of bounds\n"};

State state(unsigned int code) {
    return static_cast<State>(code);
}

/// The staging registers of the VLAN table, 0x07 to 0x09 of Global 1 (device 0x1B), also stage the
/// port states, in the high two of each port's four bits.
class SpanningTreeTableTest : public SwitchTest {
protected:
    SpanningTreeTableTest() : SwitchTest(5) {}

    Access const free = reads(0x1B, 0x05, 0x0000);
    Access const busy = reads(0x1B, 0x05, 0x8000);
};

struct PortCase {
    unsigned short port;
    unsigned int state;
    unsigned int dataRegister;
    unsigned int before;
    unsigned int after;
};

TEST_F(SpanningTreeTableTest, AddsStateBitsAndClearsMemberBits) {
    PortCase const cases[] = {
        {1, 3, 0x07, 0x0000, 0x00C0},  {1, 3, 0x07, 0x0010, 0x00C0}, {1, 1, 0x07, 0x0040, 0x0040},
        {1, 2, 0x07, 0x0040, 0x00C0},  {1, 0, 0x07, 0x00C0, 0x00C0}, {1, 0, 0x07, 0xFFFF, 0xFFCF},
        {0, 3, 0x07, 0x0003, 0x000C},  {0, 1, 0x07, 0xFFF0, 0xFFF4}, {2, 2, 0x07, 0x0300, 0x0800},
        {3, 3, 0x07, 0x3333, 0xC333},  {3, 2, 0x07, 0x0000, 0x8000}, {4, 3, 0x08, 0x3333, 0x333C},
        {7, 1, 0x08, 0xFFFF, 0xCFFF},  {8, 3, 0x09, 0x0000, 0x000C}, {10, 3, 0x09, 0x0333, 0x0C33},
        {11, 3, 0x09, 0x0000, 0xC000},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE("port " + std::to_string(expected.port));
        expectStrict(script,
                     {reads(0x1B, expected.dataRegister, expected.before),
                      writes(0x1B, expected.dataRegister, expected.after)},
                     [&] {
                         return chip.writeSpanningTreeTable({{expected.port, state(expected.state)}});
                     });
    }
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(SpanningTreeTableTest, WritesPortsOneByOneInAscendingOrder) {
    expectStrict(script,
                 {reads(0x1B, 0x07, 0x0000), writes(0x1B, 0x07, 0x000C), reads(0x1B, 0x08, 0x0000),
                  writes(0x1B, 0x08, 0x0080)},
                 [&] {
                     return chip.writeSpanningTreeTable({{5, state(2)}, {0, state(3)}});
                 });
}

TEST_F(SpanningTreeTableTest, AnEmptyMapWritesNothing) {
    expectSuccess(script, {}, [&] { return chip.writeSpanningTreeTable({}); });
}

TEST_F(SpanningTreeTableTest, APortAboveElevenGoesIntoTheRegisterOfTheEntryBeforeIt) {
    expectSuccess(script,
                  {reads(0x1B, 0x08, 0x0000), writes(0x1B, 0x08, 0x0080), reads(0x1B, 0x08, 0x0083),
                   writes(0x1B, 0x08, 0x0084)},
                  [&] {
                      return chip.writeSpanningTreeTable({{5, state(2)}, {12, state(1)}});
                  });
    EXPECT_EQ(bench.log.take(), outOfBounds);
}

TEST_F(SpanningTreeTableTest, APortAboveElevenAsTheFirstEntryIsRefused) {
    script.expect({});
    EXPECT_FALSE(chip.writeSpanningTreeTable({{12, state(3)}}));
    EXPECT_EQ(bench.log.take(), outOfBounds);
}

TEST_F(SpanningTreeTableTest, LoadsTheStagedEntry) {
    Accesses const table{free, writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x1000), free,
                         writes(0x1B, 0x05, 0xD000)};
    auto const load = [&] { return chip.writeSpanningTreeTableCommand(10); };
    expectSuccess(script, table, load);
    expectEachFailureStops(script, table, load, {0, 3});
    expectSuccess(script,
                  {free.failing(), writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x1000), busy, free.failing(),
                   writes(0x1B, 0x05, 0xD000)},
                  load);
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(SpanningTreeTableTest, ALoadIsGivenUpWhenTheUnitStaysBusy) {
    script.expect({busy.taking(1s), busy});
    EXPECT_FALSE(chip.writeSpanningTreeTableCommand(10));
    EXPECT_EQ(bench.log.take(), stuTimeout);
    script.expect({free, writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x1000), busy.taking(1s), free});
    EXPECT_FALSE(chip.writeSpanningTreeTableCommand(10));
    EXPECT_EQ(bench.log.take(), stuTimeout);
}

struct SearchCase {
    unsigned short id;
    unsigned int start;
    unsigned int foundId;
    unsigned int foundValid;
    bool result;
};

TEST_F(SpanningTreeTableTest, SearchesFromTheSpanningTreeBefore) {
    SearchCase const cases[] = {
        {10, 9, 10, 0x1000, true},  {10, 9, 10, 0xFFFF, true},  {10, 9, 10, 0x0000, false},
        {10, 9, 10, 0xEFFF, false}, {10, 9, 11, 0x1000, false}, {10, 9, 0x100A, 0x1000, false},
        {0, 63, 0, 0x1000, true},   {0, 63, 0, 0x0000, false},  {1, 0, 1, 0x1000, true},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE(testing::Message() << "spanning tree " << expected.id << " found " << expected.foundId);
        script.expect({free, writes(0x1B, 0x03, expected.start), writes(0x1B, 0x05, 0xE000),
                       reads(0x1B, 0x03, expected.foundId), reads(0x1B, 0x06, expected.foundValid)});
        EXPECT_EQ(chip.readSpanningTreeTableCommand(expected.id), expected.result);
        script.verify();
    }
}

TEST_F(SpanningTreeTableTest, ASearchFailsWithItsAccessesButTheBusyReadAndTheCommand) {
    Accesses const table{free, writes(0x1B, 0x03, 9), writes(0x1B, 0x05, 0xE000), reads(0x1B, 0x03, 10),
                         reads(0x1B, 0x06, 0x1000)};
    expectEachFailureStops(script, table, [&] { return chip.readSpanningTreeTableCommand(10); }, {0, 2});
    expectSuccess(script,
                  {free.failing(), writes(0x1B, 0x03, 9), writes(0x1B, 0x05, 0xE000).failing(),
                   reads(0x1B, 0x03, 10), reads(0x1B, 0x06, 0x1000)},
                  [&] { return chip.readSpanningTreeTableCommand(10); });
}

TEST_F(SpanningTreeTableTest, ASearchIsGivenUpWhenTheUnitStaysBusy) {
    script.expect({busy.taking(1s), free});
    EXPECT_FALSE(chip.readSpanningTreeTableCommand(10));
    EXPECT_EQ(bench.log.take(), stuTimeout);
}

TEST_F(SpanningTreeTableTest, InitialisingASpanningTreeStagesEveryPortAsDisabled) {
    Accesses const staging{reads(0x1B, 0x07, 0x3333),  writes(0x1B, 0x07, 0x3330), reads(0x1B, 0x07, 0x3330),
                           writes(0x1B, 0x07, 0x3300), reads(0x1B, 0x07, 0xFFFF),  writes(0x1B, 0x07, 0xFCFF),
                           reads(0x1B, 0x07, 0x3000),  writes(0x1B, 0x07, 0x0000), reads(0x1B, 0x08, 0x0003),
                           writes(0x1B, 0x08, 0x0000)};
    Accesses const loading{free, writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x1000), free,
                           writes(0x1B, 0x05, 0xD000)};
    auto const initialise = [&] { return chip.initialiseSpanningTree(10); };
    expectSuccess(script, staging + loading, initialise);
    expectEachFailureStops(script, staging + loading, initialise, {10, 13});
}

} // namespace
