#include "tests/manager/ManagerTest.hpp"

using test_support::Lines;

namespace {

using DestructionTest = ManagerTest;

Lines const tearDown = {
    "2|SwitchManager::~SwitchManager deleting vlans\n",
    "2|SwitchManager::~SwitchManager deleting vlans map entries\n",
    "2|SwitchManager::~SwitchManager deleting managedSwitches",
    "2|SwitchManager::~SwitchManager deleting _managedSwitches map entries\n",
    "2|SwitchManager::~SwitchManager deleting stated\n",
};

TEST_F(DestructionTest, SaysThatTheThreadDoesNotRun) {
    manage("<switches/>");
    manager.reset();
    Lines expected = {"2|SwitchManager::~SwitchManager _switchManagementThread not running\n"};
    expected.insert(expected.end(), tearDown.begin(), tearDown.end());
    EXPECT_EQ(takeLines(), expected);
}

TEST_F(DestructionTest, WaitsForTheThreadThatRuns) {
    log.threads = &application.getThreads();
    manage("<switches/>").start();
    manager.reset();
    Lines expected = {"2|SwitchManager::~SwitchManager waiting for _switchManagementThread \n"};
    expected.insert(expected.end(), tearDown.begin(), tearDown.end());
    EXPECT_EQ(takeLines("2"), expected);
}

/// With members that refer to each other in every way; the address sanitizer sees a wrong order.
TEST_F(DestructionTest, TakesAFullBoardDown) {
    manage("<board><switches>"
           "<switch id='0' switchModel='88e6096'><port id='0' connectedTo='cpu' portStatus='forwarding'/>"
           "<port id='1' connectedTo='external' portStatus='forwarding'/><trunk id='1'><port "
           "id='1'/></trunk></switch>"
           "</switches>"
           "<vlan id='5' typeOfVlan='tagBasedVlan'><port switchId='0' portId='0' ingress='addTag' "
           "egress='stripTag'>"
           "<forwardedMulticastGroup>239.1.1.1</forwardedMulticastGroup></port></vlan>"
           "<vlan id='6' typeOfVlan='portBasedVlan'><port switchId='0' portId='1'/></vlan></board>")
        .setState(2);
    deliverPhyInterfacesPopulated();
    ASSERT_EQ(manager->getManagedSwitchesCount(), 1U);
    EXPECT_NE(manager->getCpuPort(), nullptr);
    takeLines();
    manager.reset();
    EXPECT_EQ(takeLines().size(), 6U);
}

TEST_F(DestructionTest, AllowsManagersOneAfterTheOtherAndSideBySide) {
    manage("<switches/>");
    test_support::TestDocument otherDocument("<switches><switch id='1' switchModel='88e6096'/></switches>");
    {
        TestManager other(application, otherDocument, false, true);
        other.setState(2);
        IdleThread thread(application.getThreads());
        PhyInterfacesHaveBeenPopulatedEvent const event(thread, other.getType(), 0);
        other.processEvent(&event);
        EXPECT_EQ(other.getManagedSwitchesCount(), 1U);
        EXPECT_EQ(manager->getManagedSwitchesCount(), 0U);
    }
    manager->setState(2);
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(manager->getCurrentState(), 4U);
}

} // namespace
