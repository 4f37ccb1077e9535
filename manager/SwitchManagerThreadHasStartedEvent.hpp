#pragma once

#include "manager/SwitchManagerEvent.hpp"

/// The management thread runs.
class SwitchManagerThreadHasStartedEvent : public SwitchManagerEvent {
public:
    SwitchManagerThreadHasStartedEvent(Thread& thread, TypeOfActiveObject const& objectType,
                                       unsigned int instanceId);
};
