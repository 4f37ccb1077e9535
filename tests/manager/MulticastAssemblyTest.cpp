#include "model/MulticastGroup.hpp"
#include "tests/manager/AssemblyTest.hpp"

using test_support::Lines;

namespace {

std::string vlan(std::string const& id, std::string const& members) {
    return "<vlan id='" + id + "' typeOfVlan='portBasedVlan'>" + members + "</vlan>";
}

std::string member(std::string const& switchId, std::string const& portId, std::string const& address) {
    return "<port switchId='" + switchId + "' portId='" + portId + "'><forwardedMulticastGroup>" + address +
           "</forwardedMulticastGroup></port>";
}

using MulticastAssemblyTest = AssemblyTest;

TEST_F(MulticastAssemblyTest, MakesOneGroupOfOneAddressInOneVlan) {
    assemble(vlan("5", member("0", "0", "239.1.2.3") + member("0", "1", "239.1.2.3")));
    manager->configureMulticastFilters();
    EXPECT_EQ(takeLines(),
              (Lines{
                  "0|SwitchManager::addMulticastGroup. Adding multicastGroup 239.1.2.3\n",
                  "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:239.1.2.3 to port 0.0.\n",
                  "0|SwitchManager::add_multicastGroup. Multicast Group already added. 239.1.2.3\n",
                  "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:239.1.2.3 to port 0.1.\n",
              }));
    MulticastGroup const* const group = manager->getMulticastGroup(first("//forwardedMulticastGroup"));
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->getVlanId(), 5);
    EXPECT_EQ(group->getMulticastGroupIp(), "239.1.2.3");
    EXPECT_EQ(group->getPorts().size(), 2U);
}

TEST_F(MulticastAssemblyTest, MakesTwoGroupsOfOneAddressInTwoVlans) {
    assemble(vlan("5", member("0", "0", "239.1.2.3")) + vlan("6", member("0", "0", "239.1.2.3")));
    manager->configureMulticastFilters();
    EXPECT_EQ(takeLines(),
              (Lines{
                  "0|SwitchManager::addMulticastGroup. Adding multicastGroup 239.1.2.3\n",
                  "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:239.1.2.3 to port 0.0.\n",
                  "0|SwitchManager::addMulticastGroup. Adding multicastGroup 239.1.2.3\n",
                  "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:239.1.2.3 to port 0.0.\n",
              }));
}

TEST_F(MulticastAssemblyTest, ReadsTheVlansIdAsDecimal) {
    assemble(vlan("10", member("0", "0", "239.1.2.3")) + vlan("0x20", member("0", "1", "239.1.2.4")) +
             vlan("abc", member("0", "8", "239.1.2.5")));
    manager->configureMulticastFilters();
    EXPECT_EQ(manager->getMulticastGroup(first("//vlan[1]/port/*"))->getVlanId(), 10);
    EXPECT_EQ(manager->getMulticastGroup(first("//vlan[2]/port/*"))->getVlanId(), 0);
    EXPECT_EQ(manager->getMulticastGroup(first("//vlan[3]/port/*"))->getVlanId(), 0);
}

TEST_F(MulticastAssemblyTest, AcceptsAGroupUnderASwitchPort) {
    assemble("", "<forwardedMulticastGroup>239.9.9.9</forwardedMulticastGroup>");
    manager->configureMulticastFilters();
    EXPECT_EQ(takeLines(),
              (Lines{
                  "0|SwitchManager::addMulticastGroup. Adding multicastGroup 239.9.9.9\n",
                  "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:239.9.9.9 to port 0.8.\n",
              }));
    EXPECT_EQ(manager->getMulticastGroup(first("//forwardedMulticastGroup"))->getVlanId(), 0);
}

TEST_F(MulticastAssemblyTest, KeepsTheTextAsItStands) {
    assemble(vlan("5", member("0", "0", " 239.1.2.3\n") + member("0", "1", "%s%n") + member("0", "8", "")));
    manager->configureMulticastFilters();
    EXPECT_EQ(
        takeLines(),
        (Lines{
            "0|SwitchManager::addMulticastGroup. Adding multicastGroup  239.1.2.3\n\n",
            "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter: 239.1.2.3\n to port 0.0.\n",
            "0|SwitchManager::addMulticastGroup. Adding multicastGroup %s%n\n",
            "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:%s%n to port 0.1.\n",
            "0|SwitchManager::addMulticastGroup. Adding multicastGroup \n",
            "0|ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter: to port 0.8.\n",
        }));
}

TEST_F(MulticastAssemblyTest, ReportsMembersThatDoNotExistAndGoesOn) {
    assemble(vlan("5", member("3", "0", "239.1.2.3") + member("0", "2", "239.1.2.3") +
                           member("", "", "239.1.2.3") + member("0", "1", "239.1.2.3")));
    manager->configureMulticastFilters();
    EXPECT_EQ(takeLines("error"),
              (Lines{
                  "error|SwitchManager::addVlanPort. Attempt to add multicast Group to unknown switch 3\n",
                  "error|ManagedSwitch::getPort id 2 out of bounds",
                  "error|SwitchManager::addMulticastGroupPort. Attempt to add multicast Group to unknown "
                  "port 0.2\n",
                  "error|SwitchManager::addVlanPort. Attempt to add multicast Group to unknown switch -1\n",
              }));
    EXPECT_EQ(manager->getMulticastGroup(first("//forwardedMulticastGroup"))->getPorts().size(), 1U);
}

TEST_F(MulticastAssemblyTest, SurvivesAGroupThatStandsAnywhere) {
    assemble("<forwardedMulticastGroup>239.1.1.1</forwardedMulticastGroup>"
             "<vlan id='5' "
             "typeOfVlan='tagBasedVlan'><forwardedMulticastGroup>239.1.1.2</forwardedMulticastGroup></vlan>");
    manager->configureMulticastFilters();
    EXPECT_EQ(takeLines("error"),
              (Lines{
                  "error|SwitchManager::addVlanPort. Attempt to add multicast Group to unknown switch -1\n",
                  "error|SwitchManager::addVlanPort. Attempt to add multicast Group to unknown switch -1\n",
              }));
    manage("<forwardedMulticastGroup>239.1.1.1</forwardedMulticastGroup>").configureMulticastFilters();
    EXPECT_EQ(
        takeLines("error"),
        Lines{"error|SwitchManager::addVlanPort. Attempt to add multicast Group to unknown switch -1\n"});
}

TEST_F(MulticastAssemblyTest, KnowsNoGroupThatHasNotBeenAdded) {
    assemble(vlan("5", member("0", "0", "239.1.2.3")));
    EXPECT_EQ(manager->getMulticastGroup(first("//forwardedMulticastGroup")), nullptr);
}

} // namespace
