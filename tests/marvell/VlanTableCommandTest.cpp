#include "tests/marvell/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::expectEachFailureStops;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

Lines const commandTimeout{"error|MarvellSwitch::waitVlanTableReady Vlan Table ready timeout\n"};

/// Global 1 (device 0x1B): 0x02 filtering database, 0x03 spanning tree, 0x05 operation, 0x06 VLAN id
/// with bit 12 for a valid entry.
class VlanTableCommandTest : public SwitchTest {
protected:
    VlanTableCommandTest() : SwitchTest(5) {}

    Access const free = reads(0x1B, 0x05, 0x0000);
    Access const busy = reads(0x1B, 0x05, 0x8000);
};

TEST_F(VlanTableCommandTest, LoadsTheStagedEntry) {
    Accesses const table{free, writes(0x1B, 0x02, 10),    writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x100A),
                         free, writes(0x1B, 0x05, 0xB000)};
    auto const load = [&] { return chip.writeVlanTableCommand(10); };
    expectSuccess(script, table, load);
    expectEachFailureStops(script, table, load, {0, 4});
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(VlanTableCommandTest, LoadsWithTwelveBitsOfTheVlanId) {
    std::pair<unsigned short, unsigned int> const cases[] = {
        {0, 0x1000}, {1, 0x1001}, {0x0FFF, 0x1FFF}, {0x2005, 0x1005}, {0xFFFF, 0x1FFF}};
    for (auto const& expected : cases) {
        expectSuccess(script,
                      {free, writes(0x1B, 0x02, expected.first), writes(0x1B, 0x03, expected.first),
                       writes(0x1B, 0x06, expected.second), free, writes(0x1B, 0x05, 0xB000)},
                      [&] { return chip.writeVlanTableCommand(expected.first); });
    }
}

TEST_F(VlanTableCommandTest, PollsBeforeStagingAndBeforeLoading) {
    expectSuccess(script,
                  {busy, busy, free, writes(0x1B, 0x02, 10), writes(0x1B, 0x03, 10),
                   writes(0x1B, 0x06, 0x100A), busy, free, writes(0x1B, 0x05, 0xB000)},
                  [&] { return chip.writeVlanTableCommand(10); });
}

TEST_F(VlanTableCommandTest, ABusyReadThatFailsDoesNotHoldALoadUp) {
    expectSuccess(script,
                  {free.failing(), writes(0x1B, 0x02, 10), writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x100A),
                   free.failing(), writes(0x1B, 0x05, 0xB000)},
                  [&] { return chip.writeVlanTableCommand(10); });
}

TEST_F(VlanTableCommandTest, ALoadIsGivenUpWhenTheUnitStaysBusy) {
    script.expect({busy.taking(1s), busy});
    EXPECT_FALSE(chip.writeVlanTableCommand(10));
    EXPECT_EQ(bench.log.take(), commandTimeout);
    script.expect({free, writes(0x1B, 0x02, 10), writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x100A),
                   busy.taking(1s), busy});
    EXPECT_FALSE(chip.writeVlanTableCommand(10));
    EXPECT_EQ(bench.log.take(), commandTimeout);
}

struct SearchCase {
    unsigned short vlanId;
    unsigned int start;
    unsigned int found;
    bool result;
};

TEST_F(VlanTableCommandTest, SearchesFromTheVlanBefore) {
    SearchCase const cases[] = {
        {10, 0x0009, 0x100A, true},   {10, 0x0009, 0x000A, false},   {10, 0x0009, 0x100B, false},
        {10, 0x0009, 0xF00A, true},   {10, 0x0009, 0xE00A, false},   {10, 0x0009, 0x110A, false},
        {0, 0x0FFF, 0x1000, true},    {0, 0x0FFF, 0x0000, false},    {1, 0x0000, 0x1001, true},
        {4095, 0x0FFE, 0x1FFF, true}, {4095, 0x0FFE, 0x0FFF, false}, {10, 0x0009, 0x0FFF, false},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE(testing::Message() << "VLAN " << expected.vlanId << " found " << expected.found);
        script.expect({free, writes(0x1B, 0x06, expected.start), writes(0x1B, 0x05, 0xC000),
                       reads(0x1B, 0x06, expected.found)});
        EXPECT_EQ(chip.readVlanTableCommand(expected.vlanId), expected.result);
        script.verify();
    }
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableCommandTest, ASearchFailsWithItsAccessesButTheBusyReadAndTheCommand) {
    Accesses const table{free, writes(0x1B, 0x06, 9), writes(0x1B, 0x05, 0xC000), reads(0x1B, 0x06, 0x100A)};
    expectEachFailureStops(script, table, [&] { return chip.readVlanTableCommand(10); }, {0, 2});
}

TEST_F(VlanTableCommandTest, ASearchGoesOnWhenBusyReadAndCommandFail) {
    expectSuccess(script,
                  {free.failing(), writes(0x1B, 0x06, 9), writes(0x1B, 0x05, 0xC000).failing(),
                   reads(0x1B, 0x06, 0x100A)},
                  [&] { return chip.readVlanTableCommand(10); });
}

TEST_F(VlanTableCommandTest, ASearchIsGivenUpWhenTheUnitStaysBusy) {
    script.expect({busy.taking(1s), free});
    EXPECT_FALSE(chip.readVlanTableCommand(10));
    EXPECT_EQ(bench.log.take(), commandTimeout);
}

TEST_F(VlanTableCommandTest, InitialisingAVlanStagesEveryPortAsNoMember) {
    Accesses const staging{reads(0x1B, 0x07, 0x0000),  writes(0x1B, 0x07, 0x0003), reads(0x1B, 0x07, 0xC0C3),
                           writes(0x1B, 0x07, 0xC0F3), reads(0x1B, 0x07, 0x0033),  writes(0x1B, 0x07, 0x0333),
                           reads(0x1B, 0x07, 0x1333),  writes(0x1B, 0x07, 0x3333), reads(0x1B, 0x08, 0x0002),
                           writes(0x1B, 0x08, 0x0003)};
    Accesses const loading{
        free, writes(0x1B, 0x02, 10),    writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x100A),
        free, writes(0x1B, 0x05, 0xB000)};
    auto const initialise = [&] { return chip.initialiseVlan(10); };
    expectSuccess(script, staging + loading, initialise);
    expectEachFailureStops(script, staging + loading, initialise, {10, 14});
}

} // namespace
