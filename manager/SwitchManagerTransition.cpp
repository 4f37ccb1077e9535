#include "manager/SwitchManagerTransition.hpp"

SwitchManagerTransition::SwitchManagerTransition(SwitchManager::StateId from, Event::EventId const& eventId,
                                                 SwitchManager::StateId to)
    : Transition(Transition::TransitionId(from, eventId), to) {}

SwitchManagerTransition::~SwitchManagerTransition() = default;
