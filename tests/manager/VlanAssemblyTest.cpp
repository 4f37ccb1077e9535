#include "tests/manager/AssemblyTest.hpp"
#include <algorithm>

using test_support::Lines;
using testing::Contains;

namespace {

using VlanAssemblyTest = AssemblyTest;

TEST_F(VlanAssemblyTest, BuildsVlansInDocumentOrderAndMembersByAscendingId) {
    assemble("<vlan id='6' typeOfVlan='portBasedVlan'><port switchId='0' portId='0'/></vlan>"
             "<vlan id='5' typeOfVlan='tagBasedVlan'>"
             "<port switchId='0' portId='1' ingress='addTag' egress='stripTag'/></vlan>");
    document->find(""); // marks where the assembly's own queries begin
    manager->configureVlans();
    EXPECT_EQ(takeLines(),
              (Lines{
                  "0|SwitchManager::configureVlans 2 vlans to configure\n",
                  "0|SwitchManager::addVlan. Adding PortBasedVlan 0x6\n",
                  "0|SwitchManager::addVlan. Adding TagBasedVlan 0x5\n",
                  "3|TagBasedVlanPort::TagBasedVlanPort vlan 0x5 switch 0 port 1 ingressString:addTag "
                  "egressString:stripTag created\n",
                  "0|ManagedSwitchPort::addVlanPort. Add vlan:0x5 to port 0.1.\n",
                  "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x6 switch 0 port 0 created\n",
                  "0|ManagedSwitchPort::addVlanPort. Add vlan:0x6 to port 0.0.\n",
              }));
    auto const& queries = document->queries();
    auto const begin = std::find(queries.begin(), queries.end(), "") + 1;
    EXPECT_EQ(std::vector<std::string>(begin, queries.end()),
              (std::vector<std::string>{"//vlan", "//vlan[@id=5]/port", "//vlan[@id=6]/port"}));
}

TEST_F(VlanAssemblyTest, ReadsIdsAsHexadecimal) {
    assemble("<vlan id='10' typeOfVlan='tagBasedVlan'/><vlan id='0x1F' typeOfVlan='other'/>"
             "<vlan id='abc' typeOfVlan='tagBasedVlan'/>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 3 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding TagBasedVlan 0x10\n",
                               "0|SwitchManager::addVlan. Adding PortBasedVlan 0x1f\n",
                               "0|SwitchManager::addVlan. Adding TagBasedVlan 0xabc\n",
                           }));
    EXPECT_THAT(document->queries(), Contains("//vlan[@id=10]/port"));
    EXPECT_THAT(document->queries(), Contains("//vlan[@id=1f]/port"));
    EXPECT_THAT(document->queries(), Contains("//vlan[@id=abc]/port"));
}

TEST_F(VlanAssemblyTest, AnIdThatFitsNoNumberIsTheLargest) {
    assemble("<vlan id='100000005' typeOfVlan='tagBasedVlan'/><vlan id='5' typeOfVlan='tagBasedVlan'/>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 2 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding TagBasedVlan 0xffffffff\n",
                               "0|SwitchManager::addVlan. Adding TagBasedVlan 0x5\n",
                           }));
}

TEST_F(VlanAssemblyTest, FindsTheMembersOfADecimalIdAndNotOfAPrefixedOne) {
    assemble("<vlan id='64' typeOfVlan='portBasedVlan'><port switchId='0' portId='1'/></vlan>"
             "<vlan id='0x20' typeOfVlan='portBasedVlan'><port switchId='0' portId='8'/></vlan>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 2 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding PortBasedVlan 0x64\n",
                               "0|SwitchManager::addVlan. Adding PortBasedVlan 0x20\n",
                               "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x64 switch 0 port 1 created\n",
                               "0|ManagedSwitchPort::addVlanPort. Add vlan:0x64 to port 0.1.\n",
                           }));
}

TEST_F(VlanAssemblyTest, KeysAVlanWithoutANumberByAllOnes) {
    assemble("<vlan typeOfVlan='tagBasedVlan'/><vlan id='xyz' typeOfVlan='tagBasedVlan'/>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 2 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding TagBasedVlan 0xffffffff\n",
                               "error|SwitchManager::addVlan. Attempt to add duplicate vlan 0xffffffff\n",
                           }));
}

TEST_F(VlanAssemblyTest, AddsTheMembersOfADuplicateToTheFirst) {
    assemble("<vlan id='7' typeOfVlan='portBasedVlan'><port switchId='0' portId='0'/></vlan>"
             "<vlan id='7' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'/></vlan>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 2 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding PortBasedVlan 0x7\n",
                               "error|SwitchManager::addVlan. Attempt to add duplicate vlan 0x7\n",
                               "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x7 switch 0 port 0 created\n",
                               "0|ManagedSwitchPort::addVlanPort. Add vlan:0x7 to port 0.0.\n",
                               "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x7 switch 0 port 1 created\n",
                               "0|ManagedSwitchPort::addVlanPort. Add vlan:0x7 to port 0.1.\n",
                           }));
}

TEST_F(VlanAssemblyTest, ReportsMembersThatDoNotExistAndGoesOn) {
    assemble("<vlan id='5' typeOfVlan='portBasedVlan'><port switchId='3' portId='0'/>"
             "<port switchId='0' portId='2'/><port/><port switchId='x' portId='1'/><port switchId='0'/>"
             "<port switchId='0' portId='8'/></vlan>");
    manager->configureVlans();
    Lines lines = takeLines();
    lines.erase(lines.begin(), lines.begin() + 2);
    EXPECT_EQ(lines, (Lines{
                         "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown switch 3\n",
                         "error|ManagedSwitch::getPort id 2 out of bounds",
                         "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown port 0.2\n",
                         "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown switch -1\n",
                         "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown switch -1\n",
                         "error|ManagedSwitch::getPort id -1 out of bounds",
                         "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown port 0.-1\n",
                         "3|PortBasedVlanPort::PortBasedVlanPort vlan 0x5 switch 0 port 8 created\n",
                         "0|ManagedSwitchPort::addVlanPort. Add vlan:0x5 to port 0.8.\n",
                     }));
}

TEST_F(VlanAssemblyTest, DropsASecondSwitchsPortOfTheSameNumber) {
    assemble("<vlan id='5' typeOfVlan='portBasedVlan'><port switchId='0' portId='1'/>"
             "<port switchId='4' portId='1'/></vlan>");
    manager->configureVlans();
    EXPECT_EQ(takeLines("3"),
              Lines{"3|PortBasedVlanPort::PortBasedVlanPort vlan 0x5 switch 0 port 1 created\n"});
}

TEST_F(VlanAssemblyTest, ReportsAMissingTypeAndSkipsTheVlan) {
    assemble("<vlan id='5'><port switchId='0' portId='1'/></vlan><vlan/>");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 2 vlans to configure\n",
                               "error|SwitchManager::addVlan. vlan 5 has no attribute typeOfVlan\n",
                               "error|SwitchManager::addVlan. vlan (null) has no attribute typeOfVlan\n",
                           }));
}

TEST_F(VlanAssemblyTest, BuildsAVlanWhoseMemberQueryIsRefusedWithoutMembers) {
    assemble("<vlan id='5' typeOfVlan='portBasedVlan'><port switchId='0' portId='1'/></vlan>");
    document->answerNull("//vlan[@id=5]/port");
    manager->configureVlans();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureVlans 1 vlans to configure\n",
                               "0|SwitchManager::addVlan. Adding PortBasedVlan 0x5\n",
                           }));
}

TEST_F(VlanAssemblyTest, PushesNothingWithoutHardware) {
    assemble("<vlan id='5' typeOfVlan='tagBasedVlan'>"
             "<port switchId='0' portId='1' ingress='addTag' egress='stripTag'/></vlan>");
    manager->configureVlans();
    takeLines();
    manager->configureTrunks();
    manager->configureMulticastFilters();
    manager->configurePorts();
    EXPECT_EQ(takeLines(),
              (Lines{"0|SwitchManager::configureTrunks\n", "0|SwitchManager::configurePorts\n"}));
}

TEST_F(VlanAssemblyTest, AMemberWithoutANumberIsNotThePortWithoutOne) {
    manage("<board><switches><switch id='0' switchModel='88e6096'><port id='x'>"
           "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup></port></switch></switches>"
           "<vlan id='5' typeOfVlan='tagBasedVlan'><port switchId='0'/>"
           "<port switchId='0' portId='-1'/></vlan></board>");
    manager->detectSwitches();
    ASSERT_EQ(manager->getManagedSwitch(0)->getPorts().size(), 1U);
    takeLines();
    manager->configureVlans();
    manager->configureMulticastFilters();
    Lines const vlanMember{"error|ManagedSwitch::getPort id -1 out of bounds",
                           "error|SwitchManager::addVlanPort. Attempt to add vlan to unknown port 0.-1\n"};
    EXPECT_EQ(takeLines("error"),
              (Lines{vlanMember[0], vlanMember[1], vlanMember[0], vlanMember[1], vlanMember[0],
                     "error|SwitchManager::addMulticastGroupPort. Attempt to add multicast Group to unknown "
                     "port 0.-1\n"}));
}

} // namespace
