#include "manager/SwitchManagerEvent.hpp"

#include <utility>

SwitchManagerEvent::SwitchManagerEvent(Thread& thread, TypeOfActiveObject const& objectType,
                                       SwitchManagerEventId id, unsigned int instanceId, std::string name)
    : Event(thread, eventType, objectType, id, instanceId, std::move(name)) {}

SwitchManagerEvent::~SwitchManagerEvent() = default;
