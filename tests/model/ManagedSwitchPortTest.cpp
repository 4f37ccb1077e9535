#include "model/MulticastGroup.hpp"
#include "model/MulticastGroupPort.hpp"
#include "model/PortBasedVlan.hpp"
#include "model/TagBasedVlan.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::Lines;
using test_support::RecordingPort;
using test_support::TestDocument;

namespace {

class ManagedSwitchPortTest : public ModelTest {
protected:
    TestDocument element{"<port ingress='addTag' egress='stripTag'/>"};
};

struct TypeCase {
    char const* configured;
    unsigned int type;
    char const* name;
};

TEST_F(ManagedSwitchPortTest, KnowsThePortTypesOfTheDocument) {
    TypeCase const cases[] = {
        {"external", 1, "ethernetPortType"}, {"smac", 2, "smacPortType"},
        {"hmac", 3, "hmacPortType"},         {"cpu", 4, "cpuPortType"},
        {"dsp", 5, "dspPortType"},           {"switchInterlink", 6, "switchInterlink"},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE(expected.configured);
        RecordingPort const port(chip, 1, expected.configured, "disabled", calls);
        EXPECT_EQ(static_cast<unsigned int>(port.getType()), expected.type);
        EXPECT_EQ(port.getTypeName(), expected.name);
        EXPECT_EQ(log.take(), Lines{});
    }
}

TEST_F(ManagedSwitchPortTest, ReportsAnUnknownPortType) {
    for (std::string const configured :
         {"ethernet", "External", "cpu ", "", "notConnected", "switchinterlink", "%s%n"}) {
        SCOPED_TRACE(configured);
        RecordingPort const port(chip, 1, configured, "disabled", calls);
        EXPECT_EQ(static_cast<unsigned int>(port.getType()), 0U);
        EXPECT_EQ(port.getTypeName(), "unknownPortType");
        EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitchPort::ManagedSwitchPort: Unknown port type " +
                                     configured + " \n"}));
    }
}

TEST_F(ManagedSwitchPortTest, KnowsThePortStatesOfTheDocument) {
    std::pair<char const*, unsigned int> const cases[] = {
        {"disabled", 0},   {"listening", 1}, {"learning", 2}, {"forwarding", 3},
        {"Forwarding", 0}, {"blocking", 0},  {"", 0},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE(expected.first);
        RecordingPort const port(chip, 1, "cpu", expected.first, calls);
        EXPECT_EQ(static_cast<unsigned int>(port.getState()), expected.second);
        EXPECT_EQ(log.take(), Lines{});
    }
}

TEST_F(ManagedSwitchPortTest, KeepsWhatItWasBuiltFrom) {
    RecordingPort const port(chip, 11, "cpu", "disabled", calls, element.root());
    EXPECT_EQ(port.getId(), 11U);
    EXPECT_EQ(&port.getSwitch(), &chip);
    EXPECT_EQ(port.getNode(), element.root());
}

TEST_F(ManagedSwitchPortTest, LogsANewVlan) {
    auto& port = chip.addPort(3);
    PortBasedVlan vlan(application, 0x1F);
    vlan.addPort(port, TestDocument("<port/>").root());
    EXPECT_EQ(log.take("0"), (Lines{"0|ManagedSwitchPort::addVlanPort. Add vlan:0x1f to port 0.3.\n"}));
}

TEST_F(ManagedSwitchPortTest, LogsVlanZeroWithoutPrefix) {
    auto& port = chip.addPort(3);
    PortBasedVlan vlan(application, 0);
    vlan.addPort(port, TestDocument("<port/>").root());
    EXPECT_EQ(log.take("0"), (Lines{"0|ManagedSwitchPort::addVlanPort. Add vlan:0 to port 0.3.\n"}));
}

TEST_F(ManagedSwitchPortTest, KeepsTheFirstOfTwoMembershipsInOneVlan) {
    auto& port = chip.addPort(3);
    TagBasedVlan first(application, 5);
    TagBasedVlan second(application, 5);
    first.addPort(port, element.root());
    log.take();
    TestDocument const other("<port ingress='validateTag' egress='validateTag'/>");
    second.addPort(port, other.root());
    EXPECT_EQ(
        log.take("error"),
        (Lines{"error|ManagedSwitchPort::addVlanPort. Attempt to add duplicate vlan to switch port.\n"}));
    port.configureVlans();
    EXPECT_EQ(calls, (test_support::CallLog{"0.3 addPortToVlan 5 0 0", "0.3 addPortToSpanningTree 5 3",
                                            "0.3 portBasedVlanRouteToPort [ ]"}));
    EXPECT_EQ(second.getVlanPorts().size(), 1U) << "the refused membership stays the VLAN's";
}

TEST_F(ManagedSwitchPortTest, LogsANewMulticastGroup) {
    auto& port = chip.addPort(3);
    MulticastGroup group(application, "239.1.2.3", 10);
    group.addPort(port, nullptr);
    EXPECT_EQ(log.take(), (Lines{"0|ManagedSwitchPort::addMulticastFilterPort. Add "
                                 "MulticastFilter:239.1.2.3 to port 0.3.\n"}));
}

TEST_F(ManagedSwitchPortTest, RefusesASecondMembershipWithTheSameAddressAndVlan) {
    auto& port = chip.addPort(3);
    MulticastGroup first(application, "239.1.2.3", 10);
    MulticastGroup second(application, "239.1.2.3", 10);
    first.addPort(port, nullptr);
    log.take();
    second.addPort(port, nullptr);
    EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitchPort::addMulticastFilterPort. Attempt to add "
                                 "duplicate MulticastFilter to switch port.\n"}));
    ASSERT_NE(port.getMulticastGroupPort("239.1.2.3", 10), nullptr);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 10)->getMulticastGroup(), &first);
    EXPECT_EQ(second.getPorts().size(), 1U) << "the refused membership stays the group's";
}

TEST_F(ManagedSwitchPortTest, KeepsGroupsOfTheSameAddressInDifferentVlans) {
    auto& port = chip.addPort(3);
    MulticastGroup first(application, "239.1.2.3", 10);
    MulticastGroup second(application, "239.1.2.3", 11);
    first.addPort(port, nullptr);
    second.addPort(port, nullptr);
    EXPECT_EQ(log.take("error"), Lines{});
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 10)->getMulticastGroup(), &first);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 11)->getMulticastGroup(), &second);
}

TEST_F(ManagedSwitchPortTest, FindsGroupsByExactTextAndVlan) {
    auto& port = chip.addPort(3);
    MulticastGroup group(application, "239.1.2.3", 10);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 10), nullptr);
    group.addPort(port, nullptr);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.03", 10), nullptr);
    EXPECT_EQ(port.getMulticastGroupPort(" 239.1.2.3", 10), nullptr);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 0), nullptr);
    EXPECT_EQ(port.getMulticastGroupPort("", 10), nullptr);
    EXPECT_NE(port.getMulticastGroupPort("239.1.2.3", 10), nullptr);
}

TEST_F(ManagedSwitchPortTest, AddressTextIsNeverAFormat) {
    auto& port = chip.addPort(3);
    MulticastGroup group(application, "%d%s%n", 10);
    group.addPort(port, nullptr);
    EXPECT_EQ(log.take(), (Lines{"0|ManagedSwitchPort::addMulticastFilterPort. Add "
                                 "MulticastFilter:%d%s%n to port 0.3.\n"}));
}

} // namespace
