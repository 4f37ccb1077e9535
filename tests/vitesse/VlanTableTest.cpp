#include <chrono>

#include "tests/vitesse/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Command = VitesseSwitch::VlanTableCommand;

Access const idle = reads(2, 0, 0xD0, 0x00000000);
Access const busyForASecond = reads(2, 0, 0xD0, 0x00000002).taking(1s);

Lines const timeout{"1|VitesseSwitch::waitforVlanTableReady                          "
                    "Timeout waiting for Vlan Table Busy Bit :Elapsed 1.000000 : vlanTimeout 1.000000\n"};

Accesses readEntry(unsigned int vid, unsigned int entry, unsigned int command = 0x00000001) {
    return {writes(2, 0, 0xE0, vid), idle, writes(2, 0, 0xD0, command), idle, reads(2, 0, 0xD0, entry)};
}

class VlanTableTest : public SwitchTest {
protected:
    VlanTableTest() : SwitchTest(3) {}
};

TEST_F(VlanTableTest, WritesAnEntryAndDoesNotWait) {
    expectStrict({writes(2, 0, 0xE0, 0x00AB), idle, writes(2, 0, 0xD0, 0x10000032)},
                 [&] { return chip.writeVlanTableCommand(0xAB, Command{0x10000030}); }, {1});
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableTest, TheCommandReplacesTheLowTwoBits) {
    expectSuccess(script, {writes(2, 0, 0xE0, 0xFFFF), idle, writes(2, 0, 0xD0, 0xFFFFFFFE)},
                  [&] { return chip.writeVlanTableCommand(0xFFFF, Command{0xFFFFFFFF}); });
    expectSuccess(script, {writes(2, 0, 0xE0, 0), idle, writes(2, 0, 0xD0, 0x00000002)},
                  [&] { return chip.writeVlanTableCommand(0, Command{0x00000001}); });
}

TEST_F(VlanTableTest, ReadsAnEntry) {
    Command command;
    expectSuccess(script, readEntry(0xAB, 0x10000034),
                  [&] { return chip.readVlanTableCommand(0xAB, command); });
    EXPECT_EQ(command.word, 0x10000034U);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableTest, ReadingEndsAtEachFailure) {
    expectStrict(readEntry(0xAB, 0x10000034),
                 [&] {
                     Command command;
                     return chip.readVlanTableCommand(0xAB, command);
                 },
                 {1, 3});
}

TEST_F(VlanTableTest, TheReadCommandKeepsTheOtherBitsOfTheRecord) {
    Command command{0xABCDEF02};
    expectSuccess(script, readEntry(7, 0x00000010, 0xABCDEF01),
                  [&] { return chip.readVlanTableCommand(7, command); });
    EXPECT_EQ(command.word, 0x00000010U);
}

TEST_F(VlanTableTest, TheMaskOfAVlan) {
    struct {
        unsigned int entry;
        unsigned int mask;
        bool written;
    } const cases[] = {
        {0x00000000, 0x0000000, true},  {0x00000004, 0x0000001, true},  {0x02000000, 0x0800000, true},
        {0x03FFFFF8, 0x0FFFFFE, true},  {0x03FFFFFC, 0x0FFFFFF, false}, {0x04000000, 0x1000000, false},
        {0x04000004, 0x1000001, false}, {0x07FFFFFC, 0x1FFFFFF, false}, {0xF8000000, 0x0000000, true},
        {0x100000F0, 0x000003C, true},  {0xFBFFFFF8, 0x0FFFFFE, true}};
    for (auto const& expected : cases) {
        unsigned int mask = 0x55555555;
        script.expect(readEntry(0x123, expected.entry));
        EXPECT_EQ(chip.readVlanMask(0x123, mask), expected.written) << expected.entry;
        script.verify();
        EXPECT_EQ(mask, expected.mask);
    }
}

TEST_F(VlanTableTest, AnEntryThatCannotBeReadHasNoPorts) {
    unsigned int mask = 0x55555555;
    script.expect({writes(2, 0, 0xE0, 1), busyForASecond});
    EXPECT_TRUE(chip.readVlanMask(1, mask));
    EXPECT_EQ(mask, 0U);
    EXPECT_EQ(bench.log.take(), timeout);
}

TEST_F(VlanTableTest, ATableThatStaysBusyEndsEveryOperation) {
    Command command;
    script.expect({writes(2, 0, 0xE0, 1), busyForASecond});
    EXPECT_FALSE(chip.writeVlanTableCommand(1, command));
    EXPECT_EQ(bench.log.take(), timeout);
    script.expect({writes(2, 0, 0xE0, 1), busyForASecond});
    EXPECT_FALSE(chip.readVlanTableCommand(1, command));
    EXPECT_EQ(bench.log.take(), timeout);
    script.expect({writes(2, 0, 0xE0, 1), idle, writes(2, 0, 0xD0, 0x00000001), busyForASecond});
    EXPECT_FALSE(chip.readVlanTableCommand(1, command));
    EXPECT_EQ(bench.log.take(), timeout);
    script.expect({busyForASecond});
    EXPECT_FALSE(chip.clearVlanTable());
    EXPECT_EQ(bench.log.take(), (Lines{"3|VitesseSwitch::clearVlanTable\n", timeout.front()}));
}

TEST_F(VlanTableTest, ClearsTheTableAndTheSourceMaskOfEveryPort) {
    expectStrict({idle, writes(2, 0, 0xD0, 0x00000003), writes(2, 0, 0x80, 0), writes(2, 0, 0x81, 0),
                  writes(2, 0, 0x82, 0)},
                 [&] { return chip.clearVlanTable(); }, {0});
    script.expect({idle, writes(2, 0, 0xD0, 0x00000003), writes(2, 0, 0x80, 0), writes(2, 0, 0x81, 0),
                   writes(2, 0, 0x82, 0)});
    EXPECT_TRUE(chip.clearVlanTable());
    EXPECT_EQ(bench.log.take(), (Lines{"3|VitesseSwitch::clearVlanTable\n",
                                       "3|VitesseSwitch::clearVlanTable Port Vlan Table\n"}));
}

TEST_F(VlanTableTest, ClosesTheSourceMasks) {
    expectStrict({writes(2, 0, 0x80, 0), writes(2, 0, 0x81, 0), writes(2, 0, 0x82, 0)},
                 [&] { return chip.cleanPortBaseVlans(); });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableTest, FailedBusAccessesOnTheirOwnEndNothing) {
    script.expect({idle.failing(), writes(2, 0, 0xD0, 0x00000003).failing(), writes(2, 0, 0x80, 0).failing(),
                   writes(2, 0, 0x81, 0), writes(2, 0, 0x82, 0)});
    EXPECT_TRUE(chip.clearVlanTable());
    EXPECT_EQ(bench.log.take("error"),
              (Lines{"error|Failed Read : address f3008340\n", "error|Failed Write : address f3008340\n",
                     "error|Failed Write : address f3008200\n"}));
}

} // namespace
