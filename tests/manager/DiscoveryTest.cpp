#include <stdexcept>

#include "model/ManagedSwitch.hpp"
#include "tests/manager/ManagerTest.hpp"
#include "tests/support/RecordingSwitch.hpp"

using test_support::Lines;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string switches(std::string const& elements) {
    return "<board><switches>" + elements + "</switches></board>";
}

using DiscoveryTest = ManagerTest;

TEST_F(DiscoveryTest, CreatesEverySwitchOfAKnownModelWithoutHardware) {
    manage(switches("<switch id='7' switchModel='vsc7390'/><switch id='9' switchModel='88e6096'/>"
                    "<switch id='2' switchModel='88e6096'/><switch id='3' switchModel='88E6096'/>"));
    manager->detectSwitches();
    EXPECT_EQ(manager->getManagedSwitchesCount(), 3U);
    EXPECT_EQ(manager->getManagedSwitches().size(), 3U);
    for (unsigned int const id : {2U, 7U, 9U}) {
        ASSERT_NE(manager->getManagedSwitch(id), nullptr);
        EXPECT_EQ(manager->getManagedSwitch(id)->getId(), id);
        EXPECT_EQ(manager->getManagedSwitches().at(id), manager->getManagedSwitch(id));
    }
    EXPECT_EQ(manager->getManagedSwitch(3), nullptr);
    EXPECT_EQ(manager->getManagedSwitch(0), nullptr);
}

TEST_F(DiscoveryTest, CreatesMarvellBeforeVitesseEachByAscendingId) {
    manage(switches("<switch id='1' switchModel='vsc7390'/><switch id='9' switchModel='88e6096'/>"
                    "<switch id='2' switchModel='88e6096'/>"));
    manager->detectSwitches();
    Lines created;
    for (std::string const& line : takeLines("0")) {
        created.push_back(line);
    }
    EXPECT_EQ(created, (Lines{
                           "0|SwitchManager::createMarvellManagedSwitch 2\n",
                           "0|SwitchManager::createMarvellManagedSwitch 9\n",
                           "0|SwitchManager::createVitesseManagedSwitch 1\n",
                       }));
}

TEST_F(DiscoveryTest, CountsTheElementsAndGivesEverySwitchNoAddress) {
    manage(switches("<switch id='4' switchModel='88e6096'/><switch id='5' switchModel='other'/>"));
    manager->detectSwitches();
    Lines const lines = takeLines();
    EXPECT_EQ(lines.front(), "3|SwitchManager::detectSwitches 2 Switches discovered in xml\n");
    EXPECT_THAT(lines, Contains("info|ManagedSwitch::ManagedSwitch(4) 00:00:00:00:00:00\n"));
    EXPECT_THAT(lines, Not(Contains(HasSubstr(" 5"))));
}

TEST_F(DiscoveryTest, FindsNothingWhereTheDocumentHasNothing) {
    manage("<board/>");
    document->answerNull("//switches/switch");
    manager->detectSwitches();
    EXPECT_EQ(takeLines(), Lines{"3|SwitchManager::detectSwitches 0 Switches discovered in xml\n"});
    EXPECT_EQ(manager->getManagedSwitchesCount(), 0U);
}

TEST_F(DiscoveryTest, SkipsSwitchesWhoseChipDoesNotAnswer) {
    manage(switches("<switch id='4' switchModel='88e6096'/><switch id='5' switchModel='vsc7390'/>"), false);
    manager->detectSwitches();
    EXPECT_EQ(manager->getManagedSwitchesCount(), 0U);
    Lines const lines = takeLines();
    EXPECT_THAT(lines,
                Contains("3|SwitchManager::detectMarvellSwitches switch Id 4 product Number found 0 \n"));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("create"))));
}

TEST_F(DiscoveryTest, ReportsAMissingModelAndSkipsTheSwitch) {
    manage(switches("<switch id='4'/><switch/><switch id='6' switchModel='88e6096'/>"));
    manager->detectSwitches();
    EXPECT_EQ(takeLines("error"),
              (Lines{
                  "error|SwitchManager::detectSwitches switch 4 has no attribute switchModel\n",
                  "error|SwitchManager::detectSwitches switch (null) has no attribute switchModel\n",
              }));
    EXPECT_EQ(manager->getManagedSwitchesCount(), 1U);
}

TEST_F(DiscoveryTest, TakesAnIdThatIsNoNumberForZeroAndCutsLargeOnes) {
    manage(switches("<switch id='65538' switchModel='88e6096'/><switch switchModel='88e6096'/>"));
    manager->detectSwitches();
    EXPECT_EQ(manager->getManagedSwitchesCount(), 2U);
    EXPECT_NE(manager->getManagedSwitch(0), nullptr);
    EXPECT_NE(manager->getManagedSwitch(2), nullptr);
}

TEST_F(DiscoveryTest, CutsWhatIsLeftOfAnIdThatFitsNoNumber) {
    manage(switches("<switch id='4294967296' switchModel='88e6096'/>"
                    "<switch id='-4294967295' switchModel='vsc7390'/>"));
    manager->detectSwitches();
    EXPECT_EQ(takeLines("0"), (Lines{
                                  "0|SwitchManager::createMarvellManagedSwitch 65535\n",
                                  "0|SwitchManager::createVitesseManagedSwitch 0\n",
                              }));
}

TEST_F(DiscoveryTest, StopsAtASwitchThatStandsTwiceInTheDocument) {
    manage(switches("<switch id='4' switchModel='88e6096'/><switch id='4' switchModel='88e6096'/>"
                    "<switch id='5' switchModel='vsc7390'/>"))
        .setState(2);
    EXPECT_THROW(deliverPhyInterfacesPopulated(), std::runtime_error);
    EXPECT_THAT(takeLines("info"), Contains("info|ManagedSwitch::ManagedSwitch: Unknown switch count 2\n"));
    EXPECT_EQ(manager->getManagedSwitchesCount(), 0U);
    EXPECT_EQ(manager->getCurrentState(), 3U);
}

TEST_F(DiscoveryTest, KeepsTheSwitchesThatCameBeforeTheOneThatStopsStartUp) {
    manage(switches("<switch id='4' switchModel='88e6096'/><switch id='5' switchModel='88e6096'/>"
                    "<switch id='5' switchModel='vsc7390'/>"))
        .setState(2);
    EXPECT_THROW(deliverPhyInterfacesPopulated(), std::runtime_error);
    EXPECT_EQ(manager->getManagedSwitchesCount(), 1U);
    EXPECT_NE(manager->getManagedSwitch(4), nullptr);
    EXPECT_THAT(takeLines("0"), Not(Contains(HasSubstr("configure"))));
}

TEST_F(DiscoveryTest, RefusesAnIdThatIsTaken) {
    unsigned char const address[6] = {};
    manage(switches("<switch id='4' switchModel='88e6096'/>"));
    manager->detectSwitches();
    ManagedSwitch const* const first = manager->getManagedSwitch(4);
    takeLines();
    try {
        manager->createVitesseManagedSwitch(4, address);
        FAIL() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "SwitchManager::createVitesseManagedSwitch Duplicate switch response");
    }
    try {
        manager->createMarvellManagedSwitch(4, address);
        FAIL() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "SwitchManager::createMarvellManagedSwitch Duplicate switch response");
    }
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::createVitesseManagedSwitch 4\n",
                               "0|SwitchManager::createMarvellManagedSwitch 4\n",
                           }));
    EXPECT_EQ(manager->getManagedSwitch(4), first);
    EXPECT_EQ(manager->getManagedSwitchesCount(), 1U);
}

TEST_F(DiscoveryTest, HasNoMacAddressToGive) {
    manage("<board/>");
    unsigned char buffer[6] = {1, 2, 3, 4, 5, 6};
    timespec time{7, 8};
    std::string text = "untouched";
    EXPECT_FALSE(manager->getMacAddress(buffer, sizeof buffer, time, text));
    EXPECT_FALSE(manager->setDefaultMacAddress(0, time, text));
    EXPECT_THAT(buffer, testing::ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(time.tv_sec, 7);
    EXPECT_EQ(time.tv_nsec, 8);
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(takeLines(), Lines{});
}

TEST_F(DiscoveryTest, SaysWhichSwitchesKeepTheirAgeTime) {
    manage(switches(
        "<switch id='1' switchModel='88e6096' atuAgeTime='65535'/><switch id='2' switchModel='88e6096'/>"
        "<switch id='3' switchModel='88e6096' atuAgeTime='300'/>"
        "<switch id='4' switchModel='vsc7390'/><switch id='5' switchModel='vsc7390' atuAgeTime='300'/>"));
    manager->detectSwitches();
    takeLines();
    manager->configureSwitchSettings();
    EXPECT_EQ(takeLines(), (Lines{
                               "0|SwitchManager::configureSwitchSettings\n",
                               "2|SwitchManager::configureSwitchSettings switch 1 ATU Age Time not "
                               "configured, using switch default\n",
                               "2|SwitchManager::configureSwitchSettings switch 2 ATU Age Time not "
                               "configured, using switch default\n",
                           }));
}

TEST_F(DiscoveryTest, TakesTheProcessorsPortOfTheHighestSwitch) {
    manage(switches(
               "<switch id='1' switchModel='88e6096'><port id='2' connectedTo='cpu' portStatus='forwarding'/>"
               "<port id='3' connectedTo='cpu' portStatus='forwarding'/></switch>"
               "<switch id='2' switchModel='88e6096'><port id='1' connectedTo='external' "
               "portStatus='forwarding'/>"
               "<port id='5' connectedTo='cpu' portStatus='forwarding'/>"
               "<port id='6' connectedTo='cpu' portStatus='forwarding'/></switch>"
               "<switch id='3' switchModel='88e6096'/>"))
        .setState(2);
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(manager->getCpuPort(), manager->getManagedSwitch(2)->getPort(5));
    EXPECT_EQ(takeLines("warning"), Lines{});
}

TEST_F(DiscoveryTest, KeepsAProcessorsPortThatTheHostHasSet) {
    test_support::CallLog calls;
    test_support::RecordingSwitch hosts(application, 8, calls);
    ManagedSwitchPort& port = hosts.addPort(2);
    manage("<switches/>").setCpuPort(port);
    EXPECT_EQ(manager->getCpuPort(), &port);
    manager->setState(2);
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(manager->getCpuPort(), &port);
    EXPECT_EQ(takeLines("warning"), Lines{});
}

TEST_F(DiscoveryTest, PrefersTheDocumentsProcessorPortToTheHosts) {
    test_support::CallLog calls;
    test_support::RecordingSwitch hosts(application, 8, calls);
    manage(switches(
               "<switch id='1' switchModel='88e6096'><port id='2' connectedTo='cpu' portStatus='forwarding'/>"
               "</switch>"))
        .setCpuPort(hosts.addPort(2));
    manager->setState(2);
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(manager->getCpuPort(), manager->getManagedSwitch(1)->getPort(2));
}

} // namespace
