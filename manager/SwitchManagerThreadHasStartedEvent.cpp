#include "manager/SwitchManagerThreadHasStartedEvent.hpp"

SwitchManagerThreadHasStartedEvent::SwitchManagerThreadHasStartedEvent(Thread& thread,
                                                                       TypeOfActiveObject const& objectType,
                                                                       unsigned int instanceId)
    : SwitchManagerEvent(thread, objectType, switchManagerThreadHasStarted, instanceId,
                         "SwitchManager::SwitchManagerThreadHasStarted") {}
