#include <gtest/gtest.h>

#include "marvell/MarvellSwitch.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/SmiScript.hpp"

using test_support::Lines;
using test_support::MacBench;
using test_support::SmiScript;

namespace {

/// A switch that must leave the hardware alone.
class SwitchWithoutHardwareTest : public testing::Test {
protected:
    ~SwitchWithoutHardwareTest() override {
        EXPECT_EQ(bench.script.wordAccesses(), 0);
        EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    }

    MacBench<SmiScript> bench;
    MarvellSwitch chip{bench.application, 5, 3, true};
};

TEST_F(SwitchWithoutHardwareTest, TableOperationsFail) {
    EXPECT_FALSE(chip.clearVlanTable());
    EXPECT_FALSE(chip.clearVlanAndSpanningTreeTable());
    EXPECT_FALSE(chip.writeVlanTable({{1, MarvellSwitch::VtuEgressState::tagged}}));
    std::map<unsigned short, MarvellSwitch::VtuEgressState> states;
    EXPECT_FALSE(chip.readVlanTable(states));
    EXPECT_FALSE(chip.writeVlanTableCommand(10));
    EXPECT_FALSE(chip.readVlanTableCommand(10));
    EXPECT_FALSE(chip.initialiseVlan(10));
    EXPECT_FALSE(chip.writeSpanningTreeTable({{1, ManagedSwitchPort::PortEnabledStatus::forwarding}}));
    EXPECT_FALSE(chip.writeSpanningTreeTableCommand(10));
    EXPECT_FALSE(chip.readSpanningTreeTableCommand(10));
    EXPECT_FALSE(chip.initialiseSpanningTree(10));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SwitchWithoutHardwareTest, AUnitThatCannotBeReadIsNotBusy) {
    EXPECT_FALSE(chip.isVlanTableBusy());
    EXPECT_TRUE(chip.waitVlanTableReady());
}

TEST_F(SwitchWithoutHardwareTest, PhyOperationsFail) {
    unsigned short value = 0x5555;
    EXPECT_FALSE(chip.phyReadRegister(3, 2, value));
    EXPECT_EQ(value, 0x5555);
    EXPECT_FALSE(chip.phyWriteRegister(3, 2, 0));
}

TEST_F(SwitchWithoutHardwareTest, ConfigurationRunsThrough) {
    chip.configureVlans();
    chip.configurePorts();
    chip.configureMulticastFilters();
    chip.configureTrunkGroups();
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

} // namespace
