#pragma once

#include "host/Transition.hpp"
#include "manager/SwitchManager.hpp"

/// A row of the switch manager's transition table.
class SwitchManagerTransition : public Transition {
public:
    SwitchManagerTransition(SwitchManager::StateId from, Event::EventId const& eventId,
                            SwitchManager::StateId to);
    ~SwitchManagerTransition() override;
};
