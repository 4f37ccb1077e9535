#include "host/Transition.hpp"

Transition::TransitionId::TransitionId(unsigned int fromState, Event::EventId const& eventId)
    : _fromState(fromState), _eventId(eventId) {}

unsigned int Transition::TransitionId::getFromState() const {
    return _fromState;
}

Event::EventId const& Transition::TransitionId::getEventId() const {
    return _eventId;
}

Transition::Transition(TransitionId const& transitionId, unsigned int toState)
    : _transitionId(transitionId), _toState(toState) {}

Transition::~Transition() = default;

Transition::TransitionId const& Transition::getTransitionId() const {
    return _transitionId;
}

unsigned int Transition::getToState() const {
    return _toState;
}
