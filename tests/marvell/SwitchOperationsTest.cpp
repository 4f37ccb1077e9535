#include "tests/marvell/SwitchTest.hpp"

using test_support::expectStrict;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

class SwitchOperationsTest : public SwitchTest {
protected:
    SwitchOperationsTest() : SwitchTest(2) { script.expect({}); }

    std::map<unsigned int, ManagedSwitchPort*> ports{{1, nullptr}};
};

TEST_F(SwitchOperationsTest, MulticastGroupsCannotBeRead) {
    EXPECT_FALSE(chip.readMulticastGroup("239.1.2.3", 5, ports));
    EXPECT_EQ(ports.size(), 1U);
    EXPECT_EQ(bench.log.take(),
              (Lines{"1|MarvellSwitch::::readMulticastGroup Unimplemented Function in Marvell"}));
}

TEST_F(SwitchOperationsTest, MulticastGroupsCannotBeWritten) {
    EXPECT_FALSE(chip.writeMulticastGroup("239.1.2.3", 5, ports));
    EXPECT_EQ(bench.log.take(),
              (Lines{"1|MarvellSwitch::::writeMulticastGroup Unimplemented Function in Marvell"}));
}

TEST_F(SwitchOperationsTest, AggregationGroupsCannotBeWritten) {
    EXPECT_FALSE(chip.writeAggregationGroup({{0, chip.getPort(0)}, {1, chip.getPort(1)}}));
    EXPECT_EQ(bench.log.take(),
              (Lines{"1|MarvellSwitch::::writeAggregationGroup Unimplemented Function in Marvell"}));
}

TEST_F(SwitchOperationsTest, AddressTableCommandsDoNothing) {
    for (unsigned int command = 0; command < 9; ++command) {
        EXPECT_TRUE(chip.macTableCommand(static_cast<ManagedSwitch::MacAddressCommand>(command)));
    }
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SwitchOperationsTest, PhyReadsGoThroughTheChip) {
    unsigned short value = 0;
    expectStrict(script, {writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0), reads(0x1C, 0x19, 0xABCD)},
                 [&] { return chip.phyReadRegister(3, 2, value); });
    EXPECT_EQ(value, 0xABCD);
}

TEST_F(SwitchOperationsTest, PhyWritesGoThroughTheChip) {
    expectStrict(script, {writes(0x1C, 0x19, 0xBEEF), writes(0x1C, 0x18, 0x8462)},
                 [&] { return chip.phyWriteRegister(3, 2, 0xBEEF); });
}

TEST_F(SwitchOperationsTest, ClearingTheVlanTableFlushesWithoutWaiting) {
    expectStrict(script, {writes(0x1B, 0x05, 0x9000)}, [&] { return chip.clearVlanTable(); });
    expectStrict(script, {writes(0x1B, 0x05, 0x9000)}, [&] { return chip.clearVlanAndSpanningTreeTable(); });
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

} // namespace
