#include "manager/SwitchManagerEvent.hpp"

SwitchManagerEvent::SwitchManagerEvent(Thread& thread, TypeOfActiveObject const& objectType,
                                       SwitchManagerEventId id, unsigned int instanceId, std::string name)
    : Event(thread, eventType, objectType, id, instanceId, name) {}

SwitchManagerEvent::~SwitchManagerEvent() = default;
