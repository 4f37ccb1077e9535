#include "host/Event.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include "host/State.hpp"
#include "host/Threads.hpp"
#include "host/Transition.hpp"
#include "tests/reference_host/ScriptedThread.hpp"

namespace {

TEST(EventTest, TellsWhatItWasMadeOf) {
    Threads threads;
    ScriptedThread thread(threads);
    Event const event(thread, 3, TypeOfActiveObject("SwitchManager"), 2, 7, "Started");
    EXPECT_EQ(event.getType(), 3U);
    EXPECT_EQ(event.getObjectType().getName(), "SwitchManager");
    EXPECT_EQ(event.getId(), 2U);
    EXPECT_EQ(event.getInstanceId(), 7U);
    EXPECT_EQ(event.getName(), "Started");
}

TEST(EventTest, PrintsItsNumbersAndName) {
    Threads threads;
    ScriptedThread thread(threads);
    Event const event(thread, 3, TypeOfActiveObject("SwitchManager"), 2, 7, "Started");
    std::ostringstream out;
    event.print(out);
    EXPECT_EQ(out.str(), "3:SwitchManager:2.7 \"Started\"");
}

TEST(EventTest, AnEventIdTellsItsParts) {
    Event::EventId const id(3, TypeOfActiveObject("SwitchManager"), 2);
    EXPECT_EQ(id.getType(), 3U);
    EXPECT_EQ(id.getObjectType().getName(), "SwitchManager");
    EXPECT_EQ(id.getId(), 2U);
}

TEST(EventTest, ATransitionTellsItsParts) {
    Event::EventId const eventId(3, TypeOfActiveObject("SwitchManager"), 2);
    Transition const transition(Transition::TransitionId(1, eventId), 4);
    EXPECT_EQ(transition.getTransitionId().getFromState(), 1U);
    EXPECT_EQ(transition.getTransitionId().getEventId().getId(), 2U);
    EXPECT_EQ(transition.getToState(), 4U);
}

TEST(EventTest, AStateTellsItsIdAndName) {
    State const state(3, "initialising");
    EXPECT_EQ(state.getId(), 3U);
    EXPECT_EQ(state.getName(), "initialising");
}

} // namespace
