#include "model/PortBasedVlan.hpp"
#include "model/PortBasedVlanPort.hpp"
#include "model/TagBasedVlan.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::CallLog;
using test_support::Lines;
using test_support::RecordingPort;
using test_support::RecordingSwitch;
using test_support::TestDocument;

namespace {

/// The message with which every run over a port's VLANs begins.
std::string toConfigure(std::string const& port, int count) {
    return "3|ManagedSwitchPort(" + port + ")::configureVlans " + std::to_string(count) +
           " vlans to configure\n";
}

class PortVlanConfigurationTest : public ModelTest {
protected:
    void join(Vlan& vlan, RecordingPort& port) {
        vlan.addPort(port, vlan.getType() == Vlan::Type::tagBased ? tagged.root() : plain.root());
    }

    /// What configuring the port's VLANs does and says.
    void configure(RecordingPort& port) {
        log.take();
        calls.clear();
        port.configureVlans();
    }

    TestDocument plain{"<port/>"};
    TestDocument tagged{"<port ingress='addTagIfUntagged' egress='validateTag'/>"};
};

TEST_F(PortVlanConfigurationTest, APortWithoutVlansStillGetsAnEmptyListOfRoutes) {
    auto& port = chip.addPort(1);
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.1 portBasedVlanRouteToPort [ ]"});
    EXPECT_EQ(log.take(), Lines{toConfigure("0.1", 0)});
}

TEST_F(PortVlanConfigurationTest, JoinsATagBasedVlanAndItsSpanningTree) {
    auto& port = chip.addPort(3);
    TagBasedVlan vlan(application, 0x10);
    join(vlan, port);
    configure(port);
    EXPECT_EQ(calls, (CallLog{"0.3 addPortToVlan 16 2 1", "0.3 addPortToSpanningTree 16 3",
                              "0.3 portBasedVlanRouteToPort [ ]"}));
    EXPECT_EQ(log.take(), (Lines{toConfigure("0.3", 1),
                                 "4|ManagedSwitchPort::configureVlans: Port 3 assigned VID 16 \n"}));
}

TEST_F(PortVlanConfigurationTest, SpanningTreeIsForwardingWhateverThePortState) {
    auto& port = chip.addPort(3, "external", "disabled");
    TagBasedVlan vlan(application, 7);
    join(vlan, port);
    configure(port);
    EXPECT_EQ(calls[1], "0.3 addPortToSpanningTree 7 3");
}

TEST_F(PortVlanConfigurationTest, SkipsTheSpanningTreeWhenTheVlanFails) {
    auto& port = chip.addPort(3);
    TagBasedVlan vlan(application, 16);
    join(vlan, port);
    port.fail("addPortToVlan");
    configure(port);
    EXPECT_EQ(calls, (CallLog{"0.3 addPortToVlan 16 2 1", "0.3 portBasedVlanRouteToPort [ ]"}));
    EXPECT_EQ(
        log.take(),
        (Lines{toConfigure("0.3", 1), "4|ManagedSwitchPort::configureVlans: Port 3 assigned VID 16 \n",
               "error|ManagedSwitchPort::configureVlans: addPortToVlan could not vlanId 16 to Port 3 \n"}));
}

TEST_F(PortVlanConfigurationTest, ReportsAFailingSpanningTreeInTheSameWords) {
    auto& port = chip.addPort(3);
    TagBasedVlan vlan(application, 16);
    join(vlan, port);
    port.fail("addPortToSpanningTree");
    configure(port);
    EXPECT_EQ(calls, (CallLog{"0.3 addPortToVlan 16 2 1", "0.3 addPortToSpanningTree 16 3",
                              "0.3 portBasedVlanRouteToPort [ ]"}));
    EXPECT_EQ(log.take("error"), (Lines{"error|ManagedSwitchPort::configureVlans: addPortToVlan could not "
                                        "vlanId 16 to Port 3 \n"}));
}

TEST_F(PortVlanConfigurationTest, CutsTheVlanIdToSixteenBitsForTheChip) {
    auto& port = chip.addPort(3);
    TagBasedVlan vlan(application, 0x10005);
    join(vlan, port);
    configure(port);
    EXPECT_EQ(calls, (CallLog{"0.3 addPortToVlan 5 2 1", "0.3 addPortToSpanningTree 5 3",
                              "0.3 portBasedVlanRouteToPort [ ]"}));
    EXPECT_EQ(log.take("4"), (Lines{"4|ManagedSwitchPort::configureVlans: Port 3 assigned VID 65541 \n"}));
}

TEST_F(PortVlanConfigurationTest, RoutesToTheOtherMembersOfAPortBasedVlan) {
    auto& port = chip.addPort(2);
    PortBasedVlan vlan(application, 32);
    join(vlan, chip.addPort(4));
    join(vlan, port);
    join(vlan, chip.addPort(1));
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ 0.1 0.4 ]"});
    EXPECT_EQ(log.take(),
              (Lines{toConfigure("0.2", 1),
                     "4|ManagedSwitchPort::configureVlans: VLAN 32 Port 2 linking to Port 1 \n",
                     "4|ManagedSwitchPort::configureVlans: VLAN 32 Port 2 linking to Port 4 \n"}));
}

TEST_F(PortVlanConfigurationTest, OneListOfRoutesForAllPortBasedVlans) {
    auto& port = chip.addPort(2);
    auto& other = chip.addPort(5);
    PortBasedVlan later(application, 9);
    PortBasedVlan sooner(application, 3);
    join(later, port);
    join(later, other);
    join(sooner, port);
    join(sooner, chip.addPort(6));
    join(sooner, other);
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ 0.5 0.6 0.5 ]"});
    EXPECT_EQ(log.take("4"),
              (Lines{"4|ManagedSwitchPort::configureVlans: VLAN 3 Port 2 linking to Port 5 \n",
                     "4|ManagedSwitchPort::configureVlans: VLAN 3 Port 2 linking to Port 6 \n",
                     "4|ManagedSwitchPort::configureVlans: VLAN 9 Port 2 linking to Port 5 \n"}));
}

TEST_F(PortVlanConfigurationTest, WorksByAscendingVlanIdAndRoutesLast) {
    auto& port = chip.addPort(2);
    TagBasedVlan last(application, 300);
    PortBasedVlan middle(application, 200);
    TagBasedVlan first(application, 100);
    join(last, port);
    join(middle, port);
    join(middle, chip.addPort(3));
    join(first, port);
    configure(port);
    EXPECT_EQ(calls, (CallLog{"0.2 addPortToVlan 100 2 1", "0.2 addPortToSpanningTree 100 3",
                              "0.2 addPortToVlan 300 2 1", "0.2 addPortToSpanningTree 300 3",
                              "0.2 portBasedVlanRouteToPort [ 0.3 ]"}));
    EXPECT_EQ(log.take(),
              (Lines{toConfigure("0.2", 3), "4|ManagedSwitchPort::configureVlans: Port 2 assigned VID 100 \n",
                     "4|ManagedSwitchPort::configureVlans: VLAN 200 Port 2 linking to Port 3 \n",
                     "4|ManagedSwitchPort::configureVlans: Port 2 assigned VID 300 \n"}));
}

TEST_F(PortVlanConfigurationTest, LooksMembersOfOtherSwitchesUpOnTheOwnSwitch) {
    RecordingSwitch other(application, 1, calls);
    auto& port = chip.addPort(2);
    chip.addPort(6);
    PortBasedVlan vlan(application, 32);
    join(vlan, port);
    join(vlan, other.addPort(6));
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ 0.6 ]"});
}

TEST_F(PortVlanConfigurationTest, LeavesDestinationsThatTheOwnSwitchDoesNotHaveOut) {
    RecordingSwitch other(application, 1, calls);
    auto& port = chip.addPort(2);
    PortBasedVlan vlan(application, 32);
    join(vlan, port);
    join(vlan, other.addPort(6));
    join(vlan, chip.addPort(7));
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ 0.7 ]"});
    EXPECT_EQ(log.take(),
              (Lines{toConfigure("0.2", 1),
                     "4|ManagedSwitchPort::configureVlans: VLAN 32 Port 2 linking to Port 6 \n",
                     "error|ManagedSwitch::getPort id 6 out of bounds",
                     "4|ManagedSwitchPort::configureVlans: VLAN 32 Port 2 linking to Port 7 \n"}));
}

TEST_F(PortVlanConfigurationTest, ResultOfTheRoutesIsNotExamined) {
    auto& port = chip.addPort(2);
    port.fail("portBasedVlanRouteToPort");
    configure(port);
    EXPECT_EQ(log.take("error"), Lines{});
}

/// A VLAN whose members can be those of other VLANs, and whose type can be anything.
class ArbitraryVlan : public Vlan {
public:
    using Vlan::Vlan;

    void addPort(ManagedSwitchPort& port, _xmlNode*) override { addMemberOf(*this, port); }

    void addMemberOf(Vlan& vlan, ManagedSwitchPort& port) {
        members().emplace(port.getId(), new PortBasedVlanPort(vlan, port));
    }
};

TEST_F(PortVlanConfigurationTest, ReportsAVlanWithoutAType) {
    auto& port = chip.addPort(2);
    ArbitraryVlan vlan(application, 40, static_cast<Vlan::Type>(3));
    ArbitraryVlan none(application, 41, static_cast<Vlan::Type>(0));
    join(vlan, port);
    join(none, port);
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ ]"});
    EXPECT_EQ(log.take(),
              (Lines{toConfigure("0.2", 2), "error|ManagedSwitchPort::configureVlans: Vlan 40 has no type \n",
                     "error|ManagedSwitchPort::configureVlans: Vlan 41 has no type \n"}));
}

TEST_F(PortVlanConfigurationTest, RoutesOnlyToMembersOfThisPortBasedVlan) {
    auto& port = chip.addPort(2);
    ArbitraryVlan vlan(application, 40, Vlan::Type::portBased);
    ArbitraryVlan otherId(application, 41, Vlan::Type::portBased);
    ArbitraryVlan otherType(application, 40, Vlan::Type::tagBased);
    vlan.addPort(port, nullptr);
    vlan.addMemberOf(otherId, chip.addPort(3));
    vlan.addMemberOf(otherType, chip.addPort(4));
    vlan.addPort(chip.addPort(5), nullptr);
    configure(port);
    EXPECT_EQ(calls, CallLog{"0.2 portBasedVlanRouteToPort [ 0.5 ]"});
}

} // namespace
