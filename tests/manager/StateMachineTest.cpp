#include <stdexcept>
#include <thread>

#include "tests/manager/ManagerTest.hpp"

using test_support::Lines;

namespace {

char const* const noSwitches = "<switches/>";

/// What start-up says about a board without switches and VLANs, from the state change on.
Lines const emptyStartUp = {
    "3|SwitchManager::processEvent state change waitingForPhyInterfacesToBePopulated->initialising\n",
    "3|SwitchManager::State::doAction(initialising)\n",
    "debug|SwitchManager::initialisingAction\n",
    "3|SwitchManager::detectSwitches 0 Switches discovered in xml\n",
    "0|SwitchManager::configureSwitchSettings\n",
    "0|SwitchManager::configureVlans 0 vlans to configure\n",
    "0|SwitchManager::configureTrunks\n",
    "0|SwitchManager::configurePorts\n",
    "warning|SwitchManager::initialisingAction There is no CPU Port set\n",
    "3|SwitchManager::processEvent state change initialising->idleState\n",
    "3|SwitchManager::State::doAction(idleState)\n",
};

Lines const waitingForPhy = {
    "3|SwitchManager::processEvent event \"3:#:2 SwitchManager::SwitchManagerThreadHasStarted\"\n",
    "0|SwitchManager::getNewState state change "
    "waitingForSwitchManagementThreadToStart->waitingForPhyInterfacesToBePopulated\n",
    "3|SwitchManager::processEvent state change "
    "waitingForSwitchManagementThreadToStart->waitingForPhyInterfacesToBePopulated\n",
    "3|SwitchManager::State::doAction(waitingForPhyInterfacesToBePopulated)\n",
    "debug|SwitchManager::waitingForPhyInterfacesToBePopulatedAction\n",
};

Lines operator+(Lines left, Lines const& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

using StateMachineTest = ManagerTest;

TEST_F(StateMachineTest, BeginsSilentlyInStateZero) {
    manage(noSwitches);
    EXPECT_EQ(manager->getCurrentState(), 0U);
    EXPECT_EQ(takeLines(), Lines{});
    EXPECT_EQ(manager->getType().getName(), "SwitchManager");
    EXPECT_EQ(manager->getInstanceId(), 0U);
    EXPECT_EQ(&manager->getApplication(), &application);
    EXPECT_EQ(document->queries(), std::vector<std::string>{});
}

TEST_F(StateMachineTest, HasFiveNamedStatesAndAnEmptySlot) {
    manage(noSwitches);
    char const* const names[] = {"startState", "waitingForSwitchManagementThreadToStart",
                                 "waitingForPhyInterfacesToBePopulated", "initialising", "idleState"};
    for (unsigned int id = 0; id < 5; ++id) {
        ASSERT_NE(manager->getState(id), nullptr) << id;
        EXPECT_EQ(manager->getState(id)->getName(), names[id]);
        EXPECT_EQ(manager->getState(id)->getId(), id);
    }
    for (unsigned int const id : {5U, 6U, 7U, 0xFFFFFFFFU}) {
        EXPECT_EQ(manager->getState(id), nullptr) << id;
    }
}

TEST_F(StateMachineTest, WaitsForThePhyInterfacesWhenTheThreadRunsFirst) {
    manage(noSwitches).setState(1);
    deliverThreadHasStarted();
    EXPECT_EQ(takeLines(), waitingForPhy);
    EXPECT_EQ(manager->getCurrentState(), 2U);
    EXPECT_EQ(document->queries(), std::vector<std::string>{});
}

TEST_F(StateMachineTest, InitialisesWhenThePhyInterfacesComeSecond) {
    manage(noSwitches).setState(2);
    deliverPhyInterfacesPopulated();
    Lines const event = {
        "3|SwitchManager::processEvent event \"3:#:3 SwitchManager::PhyInterfacesHaveBeenPopulated\"\n",
        "0|SwitchManager::getNewState state change waitingForPhyInterfacesToBePopulated->initialising\n",
    };
    EXPECT_EQ(takeLines(), event + emptyStartUp);
    EXPECT_EQ(manager->getCurrentState(), 4U);
}

TEST_F(StateMachineTest, InitialisesWithinOneEventWhenThePhyInterfacesCameFirst) {
    manage(noSwitches).phyInterfacesHaveNowBeenSetup();
    EXPECT_EQ(takeLines(), Lines{"info|SwitchManager::phyInterfacesHaveNowBeenSetup()\n"});
    manager->setState(1);
    deliverThreadHasStarted();
    EXPECT_EQ(takeLines(), waitingForPhy + emptyStartUp);
    EXPECT_EQ(manager->getCurrentState(), 4U);
}

TEST_F(StateMachineTest, MakesItsQueriesInOrder) {
    manage("<board><switches/></board>").setState(2);
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(document->queries(),
              (std::vector<std::string>{"//switches/switch", "//vlan", "//forwardedMulticastGroup"}));
}

TEST_F(StateMachineTest, StaysIdleWhateverHappens) {
    manage(noSwitches).setState(4);
    deliverThreadHasStarted();
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(
        takeLines(),
        (Lines{
            "3|SwitchManager::processEvent event \"3:#:2 SwitchManager::SwitchManagerThreadHasStarted\"\n",
            "0|SwitchManager::getNewState state change idleState->idleState\n",
            "3|SwitchManager::processEvent event \"3:#:3 SwitchManager::PhyInterfacesHaveBeenPopulated\"\n",
            "0|SwitchManager::getNewState state change idleState->idleState\n",
        }));
    EXPECT_EQ(manager->getCurrentState(), 4U);
}

TEST_F(StateMachineTest, KnowsNoTransitionsButTwo) {
    manage(noSwitches);
    IdleThread thread(application.getThreads());
    SwitchManagerThreadHasStartedEvent const started(thread, manager->getType(), 0);
    PhyInterfacesHaveBeenPopulatedEvent const populated(thread, manager->getType(), 0);
    unsigned int const afterStarted[] = {0, 2, 2, 3, 4};
    unsigned int const afterPopulated[] = {0, 1, 3, 3, 4};
    for (unsigned int state = 0; state < 5; ++state) {
        manager->setState(state);
        EXPECT_EQ(manager->getNewState(&started), afterStarted[state]) << state;
        EXPECT_EQ(manager->getNewState(&populated), afterPopulated[state]) << state;
    }
}

TEST_F(StateMachineTest, TellsEventsOfOtherObjectsApart) {
    manage(noSwitches).setState(1);
    IdleThread thread(application.getThreads());
    TypeOfActiveObject const other("SomethingElse");
    SwitchManagerThreadHasStartedEvent const otherObject(thread, other, 0);
    Event const otherType(thread, 4, manager->getType(), 2, 0, "of another family");
    EXPECT_EQ(manager->getNewState(&otherObject), 1U);
    EXPECT_EQ(manager->getNewState(&otherType), 1U);
}

TEST_F(StateMachineTest, RefusesAStateThatItDoesNotHave) {
    manage(noSwitches).setState(4);
    Event::EventId const id(3, manager->getType(), 2);
    manager->addRow(
        new SwitchManagerTransition(SwitchManager::idleState, id, static_cast<SwitchManager::StateId>(5)));
    try {
        deliverThreadHasStarted();
        FAIL() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "SwitchManager::processEvent. Unknown state");
    }
    EXPECT_EQ(manager->getCurrentState(), 4U);
    // The active object's mutex was given back on the way out: another thread gets through.
    std::thread([this] { manager->start(); }).join();
    EXPECT_NE(manager->getCurrentState(), 4U);
    application.getThreads().endEventLoops();
}

TEST_F(StateMachineTest, ReportsAnEventThatShouldNotHappen) {
    manage(noSwitches).setState(3);
    IdleThread thread(application.getThreads());
    SwitchManagerThreadHasStartedEvent const event(thread, manager->getType(), 0);
    manager->shouldNotHappen(&event);
    EXPECT_EQ(takeLines(), Lines{"error|SwitchManager event "
                                 "3:#:2\"SwitchManager::SwitchManagerThreadHasStarted\" shouldNotHappen  "
                                 "in state 3 \"initialising\".\n"});
    EXPECT_EQ(manager->getCurrentState(), 3U);
}

TEST_F(StateMachineTest, ActionsNameThemselvesAndTellWhereToGo) {
    manage(noSwitches).setState(1);
    EXPECT_EQ(manager->startStateAction(nullptr), 1U);
    EXPECT_EQ(manager->waitingForSwitchManagementThreadToStartAction(nullptr), 1U);
    EXPECT_EQ(manager->waitingForPhyInterfacesToBePopulatedAction(nullptr), 1U);
    EXPECT_EQ(manager->idleStateAction(nullptr), 1U);
    EXPECT_EQ(takeLines(), (Lines{
                               "debug|SwitchManager::startStateAction\n",
                               "debug|SwitchManager::waitingForSwitchManagementThreadToStartAction\n",
                               "debug|SwitchManager::waitingForPhyInterfacesToBePopulatedAction\n",
                           }));
    manager->phyInterfacesHaveNowBeenSetup();
    EXPECT_EQ(manager->waitingForPhyInterfacesToBePopulatedAction(nullptr), 3U);
}

TEST_F(StateMachineTest, IgnoresItsFirstFlag) {
    for (bool const flag : {false, true}) {
        takeLines();
        test_support::TestDocument other(noSwitches);
        TestManager flagged(application, other, flag, true);
        flagged.setState(2);
        IdleThread thread(application.getThreads());
        PhyInterfacesHaveBeenPopulatedEvent const event(thread, flagged.getType(), 0);
        flagged.processEvent(&event);
        EXPECT_EQ(flagged.getCurrentState(), 4U);
        Lines const lines = takeLines();
        EXPECT_EQ(Lines(lines.begin() + 2, lines.end()), emptyStartUp);
    }
}

TEST_F(StateMachineTest, EventsCarryTheirNumbersAndNames) {
    manage(noSwitches);
    IdleThread thread(application.getThreads());
    SwitchManagerThreadHasStartedEvent const started(thread, manager->getType(), 7);
    PhyInterfacesHaveBeenPopulatedEvent const populated(thread, manager->getType(), 8);
    EXPECT_EQ(started.getType(), 3U);
    EXPECT_EQ(started.getId(), 2U);
    EXPECT_EQ(started.getInstanceId(), 7U);
    EXPECT_EQ(started.getName(), "SwitchManager::SwitchManagerThreadHasStarted");
    EXPECT_EQ(populated.getType(), 3U);
    EXPECT_EQ(populated.getId(), 3U);
    EXPECT_EQ(populated.getInstanceId(), 8U);
    EXPECT_EQ(populated.getName(), "SwitchManager::PhyInterfacesHaveBeenPopulated");
}

TEST_F(StateMachineTest, TransitionsKeepTheirRow) {
    TypeOfActiveObject const type("SwitchManager");
    SwitchManagerTransition const row(SwitchManager::waitingForPhyInterfacesToBePopulated,
                                      Event::EventId(3, type, 3), SwitchManager::initialising);
    EXPECT_EQ(row.getTransitionId().getFromState(), 2U);
    EXPECT_EQ(row.getTransitionId().getEventId().getType(), 3U);
    EXPECT_EQ(row.getTransitionId().getEventId().getId(), 3U);
    EXPECT_EQ(row.getToState(), 3U);
}

} // namespace
