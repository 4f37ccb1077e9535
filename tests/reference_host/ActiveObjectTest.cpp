#include "host/ActiveObject.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "host/Event.hpp"
#include "host/MutexLock.hpp"
#include "host/State.hpp"
#include "host/Transition.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/reference_host/ScriptedThread.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"

using test_support::NullMemory;
using test_support::RecordingLog;

namespace {

class Lamp : public ActiveObject {
public:
    using ActiveObject::addTransaction;
    using ActiveObject::getMutex;
    using ActiveObject::setCurrentState;

    explicit Lamp(ThreadedApplication& application) : ActiveObject(application, "Lamp", 5) {}
    void shouldNotHappen(Event const*) override {}
    State const* getState(unsigned int) const override { return nullptr; }
};

/// A transition that tells when it goes.
class CountedTransition : public Transition {
public:
    CountedTransition(TransitionId const& id, unsigned int to, int& alive)
        : Transition(id, to), _alive(alive) {
        ++_alive;
    }
    ~CountedTransition() override { --_alive; }

private:
    int& _alive;
};

class ActiveObjectTest : public testing::Test {
protected:
    Event event(unsigned int eventType, std::string const& objectType, unsigned int id) {
        return {thread, eventType, TypeOfActiveObject(objectType), id, 0, "event"};
    }

    static Transition* transition(unsigned int from, unsigned int eventId, unsigned int to) {
        return new Transition(
            Transition::TransitionId(from, Event::EventId(3, TypeOfActiveObject("Lamp"), eventId)), to);
    }

    RecordingLog log;
    NullMemory memory;
    reference_host::HostApplication application{log, memory};
    ScriptedThread thread{application.getThreads()};
};

TEST_F(ActiveObjectTest, KnowsItsApplicationTypeAndInstance) {
    Lamp const lamp(application);
    EXPECT_EQ(&lamp.getApplication(), &application);
    EXPECT_EQ(lamp.getType().getName(), "Lamp");
    EXPECT_EQ(lamp.getInstanceId(), 5U);
}

TEST_F(ActiveObjectTest, StartsInStateZeroAndKeepsWhatItIsSetTo) {
    Lamp lamp(application);
    EXPECT_EQ(lamp.getCurrentState(), 0U);
    lamp.setCurrentState(4);
    EXPECT_EQ(lamp.getCurrentState(), 4U);
}

TEST_F(ActiveObjectTest, TakesTheTransitionThatMatches) {
    Lamp lamp(application);
    lamp.addTransaction(transition(1, 2, 6));
    lamp.addTransaction(transition(2, 2, 7));
    lamp.addTransaction(transition(1, 3, 8));
    Event const two = event(3, "Lamp", 2);
    Event const three = event(3, "Lamp", 3);
    EXPECT_EQ(lamp.getNewState(1, &two), 6U);
    EXPECT_EQ(lamp.getNewState(2, &two), 7U);
    EXPECT_EQ(lamp.getNewState(1, &three), 8U);
}

TEST_F(ActiveObjectTest, StaysWhenAnyPartOfTheKeyDiffers) {
    Lamp lamp(application);
    lamp.addTransaction(transition(1, 2, 6));
    Event const otherId = event(3, "Lamp", 4);
    Event const otherType = event(4, "Lamp", 2);
    Event const otherObject = event(3, "Door", 2);
    Event const matching = event(3, "Lamp", 2);
    EXPECT_EQ(lamp.getNewState(1, &otherId), 1U);
    EXPECT_EQ(lamp.getNewState(1, &otherType), 1U);
    EXPECT_EQ(lamp.getNewState(1, &otherObject), 1U);
    EXPECT_EQ(lamp.getNewState(9, &matching), 9U);
    EXPECT_EQ(lamp.getNewState(1, nullptr), 1U);
}

TEST_F(ActiveObjectTest, AskingDoesNotChangeTheCurrentState) {
    Lamp lamp(application);
    lamp.addTransaction(transition(0, 2, 6));
    Event const two = event(3, "Lamp", 2);
    EXPECT_EQ(lamp.getNewState(0, &two), 6U);
    EXPECT_EQ(lamp.getCurrentState(), 0U);
}

TEST_F(ActiveObjectTest, OwnsItsTransitions) {
    int alive = 0;
    {
        Lamp lamp(application);
        Event::EventId const eventId(3, TypeOfActiveObject("Lamp"), 2);
        lamp.addTransaction(new CountedTransition(Transition::TransitionId(0, eventId), 1, alive));
        lamp.addTransaction(new CountedTransition(Transition::TransitionId(1, eventId), 2, alive));
        lamp.addTransaction(nullptr);
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 0);
}

TEST_F(ActiveObjectTest, IgnoringAnEventChangesNothingAndSaysNothing) {
    Lamp lamp(application);
    Event const two = event(3, "Lamp", 2);
    lamp.ignoreEvent(&two, State(0, "off"));
    EXPECT_EQ(lamp.getCurrentState(), 0U);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ActiveObjectTest, ItsMutexBearsItsNameAndExcludes) {
    Lamp lamp(application);
    EXPECT_EQ(lamp.getMutex().getName(), "Lamp");
    int value = 0;
    auto count = [&] {
        for (int i = 0; i < 1000; ++i) {
            MutexLock const lock(lamp.getMutex());
            ++value;
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(value, 2000);
}

// One side stores a state and looks at a flag, the other raises the flag and looks at the state: at
// least one of them must see what the other did.
TEST_F(ActiveObjectTest, StoresAndLoadsOfTheStateHaveOneOrder) {
    Lamp lamp(application);
    for (int i = 0; i < 2000; ++i) {
        lamp.setCurrentState(1);
        std::atomic<bool> flag{false};
        std::atomic<bool> go{false};
        bool sawState = false;
        std::thread reporter([&] {
            while (!go) {
            }
            flag = true;
            sawState = lamp.getCurrentState() == 2;
        });
        go = true;
        lamp.setCurrentState(2);
        bool const sawFlag = flag;
        reporter.join();
        ASSERT_TRUE(sawState || sawFlag);
    }
}

} // namespace
