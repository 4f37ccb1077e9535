#include "tests/marvell/PortTest.hpp"

using test_support::expectStrict;
using test_support::Lines;
using test_support::reads;
using test_support::RecordingPort;
using test_support::writes;

namespace {

/// Register 0x06 is the port-based VLAN map, 0x07 the default VLAN with bit 12 to force it, bits
/// 11..10 of 0x08 the 802.1Q mode.
using PortIngressTest = PortTest;

struct VlanCase {
    unsigned short vlanId;
    unsigned int before;
    unsigned int after;
};

TEST_F(PortIngressTest, AddTagForcesTheDefaultVlan) {
    VlanCase const cases[] = {{10, 0x0000, 0x100A},
                              {10, 0xFFFF, 0xF00A},
                              {4095, 0x0000, 0x1FFF},
                              {0, 0x0FFF, 0x1000},
                              {0x200B, 0x0000, 0x100B}};
    for (auto const& expected : cases) {
        expectStrict(registers, {reads(0x13, 0x07, expected.before), writes(0x13, 0x07, expected.after)},
                     [&] { return port.ingressAddTag(expected.vlanId); });
    }
}

TEST_F(PortIngressTest, AddTagIfUntaggedSetsTheDefaultVlanWithoutForce) {
    VlanCase const cases[] = {{10, 0x0000, 0x000A},
                              {10, 0xFFFF, 0xE00A},
                              {4095, 0x1000, 0x0FFF},
                              {0, 0x1FFF, 0x0000},
                              {0x300B, 0x0000, 0x000B}};
    for (auto const& expected : cases) {
        expectStrict(registers, {reads(0x13, 0x07, expected.before), writes(0x13, 0x07, expected.after)},
                     [&] { return port.ingressAddTagIfUntagged(expected.vlanId); });
    }
}

TEST_F(PortIngressTest, ValidateTagKeepsTheDefaultVlan) {
    VlanCase const cases[] = {{0, 0x1005, 0x0005}, {0, 0xFFFF, 0xEFFF}, {0, 0x0005, 0x0005}};
    for (auto const& expected : cases) {
        expectStrict(registers, {reads(0x13, 0x07, expected.before), writes(0x13, 0x07, expected.after)},
                     [&] { return port.ingressValidateTag(); });
    }
}

TEST_F(PortIngressTest, SetsTheIeee8021QMode) {
    struct {
        unsigned int mode;
        unsigned int before;
        unsigned int after;
    } const cases[] = {{0, 0xFFFF, 0xF3FF}, {1, 0x0000, 0x0400}, {1, 0xFFFF, 0xF7FF}, {2, 0x0000, 0x0800},
                       {3, 0x0000, 0x0C00}, {4, 0xFFFF, 0xF3FF}, {7, 0x0000, 0x0C00}};
    for (auto const& expected : cases) {
        expectStrict(
            registers, {reads(0x13, 0x08, expected.before), writes(0x13, 0x08, expected.after)},
            [&] { return port.ieee802_1QMode(static_cast<MarvellPort::Ieee802_1QModeVal>(expected.mode)); });
    }
}

TEST_F(PortIngressTest, RoutesToOnePort) {
    struct {
        unsigned int target;
        unsigned int before;
        unsigned int after;
    } const cases[] = {{0, 0x0000, 0x0001},         {1, 0x0001, 0x0003},  {10, 0x0000, 0x0400},
                       {15, 0x0000, 0x8000},        {4, 0xFFFF, 0xFFFF},  {16, 0x0001, 0x0001},
                       {31, 0x0001, 0x0001},        {32, 0x0002, 0x0002}, {33, 0x0001, 0x0001},
                       {0xFFFFFFFF, 0x0001, 0x0001}};
    for (auto const& expected : cases) {
        SCOPED_TRACE(testing::Message() << "to port " << expected.target);
        RecordingPort destination(owner, expected.target, "external", "forwarding", calls);
        expectStrict(registers, {reads(0x13, 0x06, expected.before), writes(0x13, 0x06, expected.after)},
                     [&] { return port.portBasedVlanRouteToPort(destination); });
    }
}

TEST_F(PortIngressTest, RoutesToSeveralPortsAtOnceAndKeepsRoutes) {
    auto& first = owner.addPort(1);
    auto& second = owner.addPort(4);
    std::list<ManagedSwitchPort*> const both{&first, &second};
    expectStrict(registers, {reads(0x13, 0x06, 0x0001), writes(0x13, 0x06, 0x0013)},
                 [&] { return port.portBasedVlanRouteToPort(both); });
    std::list<ManagedSwitchPort*> const twice{&second, &second, &first};
    expectStrict(registers, {reads(0x13, 0x06, 0xFF00), writes(0x13, 0x06, 0xFF12)},
                 [&] { return port.portBasedVlanRouteToPort(twice); });
}

TEST_F(PortIngressTest, AnEmptyListWritesTheRoutesBack) {
    expectStrict(registers, {reads(0x13, 0x06, 0x07F7), writes(0x13, 0x06, 0x07F7)},
                 [&] { return port.portBasedVlanRouteToPort(std::list<ManagedSwitchPort*>{}); });
}

TEST_F(PortIngressTest, AListMayNamePortsWithoutABit) {
    auto& beyond = owner.addPort(32);
    auto& near = owner.addPort(2);
    std::list<ManagedSwitchPort*> const targets{&beyond, &near};
    expectStrict(registers, {reads(0x13, 0x06, 0x0000), writes(0x13, 0x06, 0x0004)},
                 [&] { return port.portBasedVlanRouteToPort(targets); });
}

TEST_F(PortIngressTest, RoutesThatLeadNowhereAreLeftOut) {
    std::list<ManagedSwitchPort*> const targets{nullptr, &owner.addPort(2), nullptr};
    expectStrict(registers, {reads(0x13, 0x06, 0x0000), writes(0x13, 0x06, 0x0004)},
                 [&] { return port.portBasedVlanRouteToPort(targets); });
}

TEST_F(PortIngressTest, APortOfAnotherChipsSwitchHasNoTablesToJoin) {
    registers.expect({});
    EXPECT_FALSE(port.addPortToVlanTable(10, ManagedSwitchPort::EgressTagSetting::stripTag));
    EXPECT_FALSE(port.removePortFromVlanTable(10));
    EXPECT_FALSE(port.addPortToSpanningTree(10, ManagedSwitchPort::PortEnabledStatus::forwarding));
}

TEST_F(PortIngressTest, MulticastGroupsAreNotSupported) {
    registers.expect({});
    EXPECT_FALSE(port.addPortToMulticastGroup("239.1.2.3", 10));
    EXPECT_EQ(log.take(),
              (Lines{"1|MarvellPort::addPortToMulticastFilter Unimplemented Function for Marvell\n"}));
    EXPECT_FALSE(port.removePortFromMulticastGroup("239.1.2.3", 10));
    EXPECT_EQ(log.take(),
              (Lines{"1|MarvellPort::removePortToMulticastGroup Unimplemented Function for Marvell\n"}));
}

} // namespace
