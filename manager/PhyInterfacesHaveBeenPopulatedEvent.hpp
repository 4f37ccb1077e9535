#pragma once

#include "manager/SwitchManagerEvent.hpp"

/// The host has set up its PHY interfaces.
class PhyInterfacesHaveBeenPopulatedEvent : public SwitchManagerEvent {
public:
    PhyInterfacesHaveBeenPopulatedEvent(Thread& thread, TypeOfActiveObject const& objectType,
                                        unsigned int instanceId);
};
