#include "model/MulticastGroup.hpp"
#include "model/TrunkGroup.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::CallLog;
using test_support::Lines;

namespace {

class SwitchFanOutTest : public ModelTest {
protected:
    TrunkGroup& insertTrunkGroup(unsigned int key, unsigned int id) {
        auto* const group = new TrunkGroup(id);
        std::pair<unsigned int, TrunkGroup*> entry(key, group);
        chip.insertTrunkGroup(entry);
        return *group;
    }
};

TEST_F(SwitchFanOutTest, ClearsTheVlanTableOnceBeforeThePorts) {
    chip.addPort(2);
    chip.addPort(0);
    chip.addPort(1);
    chip.configureVlans();
    EXPECT_EQ(calls, (CallLog{"0 clearVlanTable", "0.0 portBasedVlanRouteToPort [ ]",
                              "0.1 portBasedVlanRouteToPort [ ]", "0.2 portBasedVlanRouteToPort [ ]"}));
}

TEST_F(SwitchFanOutTest, ClearsTheVlanTableOfASwitchWithoutPorts) {
    chip.configureVlans();
    EXPECT_EQ(calls, CallLog{"0 clearVlanTable"});
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(SwitchFanOutTest, GoesOnToThePortsWhenTheVlanTableCannotBeCleared) {
    chip.addPort(1);
    chip.succeed(false);
    chip.configureVlans();
    EXPECT_EQ(calls, (CallLog{"0 clearVlanTable", "0.1 portBasedVlanRouteToPort [ ]"}));
}

TEST_F(SwitchFanOutTest, ConfiguresPortsByAscendingId) {
    chip.addPort(9);
    chip.addPort(10);
    chip.addPort(1);
    chip.configurePorts();
    EXPECT_EQ(calls, (CallLog{"0.1 initialise", "0.9 initialise", "0.10 initialise"}));
}

TEST_F(SwitchFanOutTest, ConfiguresMulticastFiltersByAscendingPortId) {
    auto& second = chip.addPort(2);
    auto& first = chip.addPort(1);
    MulticastGroup group(application, "239.1.2.3", 5);
    group.addPort(second, nullptr);
    group.addPort(first, nullptr);
    chip.configureMulticastFilters();
    EXPECT_EQ(calls, (CallLog{"0.1 addPortToMulticastGroup 239.1.2.3 5",
                              "0.2 addPortToMulticastGroup 239.1.2.3 5"}));
}

TEST_F(SwitchFanOutTest, HandsTrunkGroupsToTheChipByAscendingKey) {
    TrunkGroup& later = insertTrunkGroup(1, 3);
    TrunkGroup& sooner = insertTrunkGroup(0, 7);
    later.insertPort({2, &chip.addPort(2)});
    sooner.insertPort({9, &chip.addPort(9)});
    sooner.insertPort({8, &chip.addPort(8)});
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, (CallLog{"0 writeAggregationGroup 8 9", "0 writeAggregationGroup 2"}));
}

TEST_F(SwitchFanOutTest, HandsAnEmptyTrunkGroupToTheChip) {
    insertTrunkGroup(0, 1);
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, CallLog{"0 writeAggregationGroup"});
}

TEST_F(SwitchFanOutTest, LeavesTrunkMembersWithoutAPortOut) {
    TrunkGroup& group = insertTrunkGroup(0, 1);
    group.insertPort({8, nullptr});
    group.insertPort({9, &chip.addPort(9)});
    group.insertPort({0xFFFFFFFF, nullptr});
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, CallLog{"0 writeAggregationGroup 9"});
    EXPECT_EQ(group.getTrunkedPorts().size(), 3U);
}

TEST_F(SwitchFanOutTest, GoesOnToTheNextTrunkGroupAfterAFailure) {
    insertTrunkGroup(0, 1);
    insertTrunkGroup(1, 2);
    chip.succeed(false);
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, (CallLog{"0 writeAggregationGroup", "0 writeAggregationGroup"}));
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(SwitchFanOutTest, PassesOverEntriesWithoutAnObject) {
    std::pair<unsigned int, ManagedSwitchPort*> port(0, nullptr);
    chip.insertPort(port);
    std::pair<unsigned int, TrunkGroup*> group(0, nullptr);
    chip.insertTrunkGroup(group);
    chip.addPort(1);
    chip.configureVlans();
    chip.configurePorts();
    chip.configureMulticastFilters();
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, (CallLog{"0 clearVlanTable", "0.1 portBasedVlanRouteToPort [ ]", "0.1 initialise"}));
}

TEST_F(SwitchFanOutTest, WithoutPortsAndTrunkGroupsNothingElseHappens) {
    chip.configurePorts();
    chip.configureMulticastFilters();
    chip.configureTrunkGroups();
    EXPECT_EQ(calls, CallLog{});
    EXPECT_EQ(log.take(), Lines{});
}

} // namespace
