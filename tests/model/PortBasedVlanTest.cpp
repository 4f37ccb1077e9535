#include "model/PortBasedVlan.hpp"
#include "model/VlanPort.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::Lines;
using test_support::RecordingSwitch;
using test_support::TestDocument;

namespace {

char const* const ignoringIngress = "warning|PortBasedVlan::addPort. Ignoring attribute ingress\n";
char const* const ignoringEgress = "warning|PortBasedVlan::addPort. Ignoring attribute egress\n";
char const* const memberCreated =
    "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x2a switch 0 port 3 created\n";
char const* const vlanAdded = "0|ManagedSwitchPort::addVlanPort. Add vlan:0x2a to port 0.3.\n";

class PortBasedVlanTest : public ModelTest {
protected:
    Lines add(PortBasedVlan& target, ManagedSwitchPort& port, std::string const& element) {
        TestDocument const document(element);
        log.take();
        target.addPort(port, document.root());
        return log.take();
    }

    PortBasedVlan vlan{application, 0x2A};
};

TEST_F(PortBasedVlanTest, KeepsWhatItWasBuiltFrom) {
    EXPECT_EQ(vlan.getId(), 0x2AU);
    EXPECT_EQ(static_cast<unsigned int>(vlan.getType()), 1U);
    EXPECT_EQ(vlan.getApplication(), &application);
    EXPECT_TRUE(vlan.getVlanPorts().empty());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortBasedVlanTest, AddsAMember) {
    auto& port = chip.addPort(3);
    EXPECT_EQ(add(vlan, port, "<port switchId='0' portId='3'/>"), (Lines{memberCreated, vlanAdded}));
    ASSERT_EQ(vlan.getVlanPorts().count(3), 1U);
    VlanPort const& member = *vlan.getVlanPorts().at(3);
    EXPECT_EQ(member.getVlan(), &vlan);
    EXPECT_EQ(member.getSwitchPort(), &port);
}

TEST_F(PortBasedVlanTest, IgnoresTagSettingsWithAWarningEach) {
    auto& port = chip.addPort(3);
    EXPECT_EQ(add(vlan, port, "<port egress='stripTag' ingress='addTag'/>"),
              (Lines{ignoringIngress, ignoringEgress, memberCreated, vlanAdded}));
    EXPECT_EQ(vlan.getVlanPorts().size(), 1U);
}

TEST_F(PortBasedVlanTest, WarnsOnlyAboutTheSettingThatIsThere) {
    EXPECT_EQ(add(vlan, chip.addPort(3), "<port ingress=''/>"),
              (Lines{ignoringIngress, memberCreated, vlanAdded}));
    PortBasedVlan other(application, 0x2A);
    RecordingSwitch otherChip(application, 0, calls);
    EXPECT_EQ(add(other, otherChip.addPort(3), "<port egress='x'/>"),
              (Lines{ignoringEgress, memberCreated, vlanAdded}));
}

TEST_F(PortBasedVlanTest, DropsASecondMemberWithTheSamePortIdSilently) {
    auto& port = chip.addPort(3);
    RecordingSwitch otherChip(application, 1, calls);
    add(vlan, port, "<port/>");
    EXPECT_EQ(add(vlan, port, "<port/>"), Lines{});
    EXPECT_EQ(add(vlan, otherChip.addPort(3), "<port/>"), Lines{});
    EXPECT_EQ(vlan.getVlanPorts().size(), 1U);
    EXPECT_EQ(vlan.getVlanPorts().at(3)->getSwitchPort(), &port);
}

TEST_F(PortBasedVlanTest, WarnsAboutTagSettingsAlsoOfAMemberThatIsDropped) {
    auto& port = chip.addPort(3);
    add(vlan, port, "<port/>");
    EXPECT_EQ(add(vlan, port, "<port ingress='addTag' egress='stripTag'/>"),
              (Lines{ignoringIngress, ignoringEgress}));
}

TEST_F(PortBasedVlanTest, ListsMembersByAscendingPortId) {
    add(vlan, chip.addPort(10), "<port/>");
    add(vlan, chip.addPort(2), "<port/>");
    std::vector<unsigned int> ids;
    for (auto const& member : vlan.getVlanPorts()) {
        ids.push_back(member.first);
    }
    EXPECT_EQ(ids, (std::vector<unsigned int>{2, 10}));
}

} // namespace
