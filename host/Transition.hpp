#pragma once

#include "host/Event.hpp"

/// One row of an active object's transition table: in this state, on this event, go there.
class Transition {
public:
    /// The key of the row.
    class TransitionId {
    public:
        TransitionId(unsigned int fromState, Event::EventId const& eventId);
        unsigned int getFromState() const;
        Event::EventId const& getEventId() const;

    private:
        unsigned int _fromState;
        Event::EventId _eventId;
    };

    Transition(TransitionId const& transitionId, unsigned int toState);
    virtual ~Transition();
    Transition(Transition const&) = delete;
    Transition& operator=(Transition const&) = delete;

    TransitionId const& getTransitionId() const;
    unsigned int getToState() const;

private:
    TransitionId _transitionId;
    unsigned int _toState;
};
