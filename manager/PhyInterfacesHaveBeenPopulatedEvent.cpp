#include "manager/PhyInterfacesHaveBeenPopulatedEvent.hpp"

PhyInterfacesHaveBeenPopulatedEvent::PhyInterfacesHaveBeenPopulatedEvent(Thread& thread,
                                                                         TypeOfActiveObject const& objectType,
                                                                         unsigned int instanceId)
    : SwitchManagerEvent(thread, objectType, phyInterfacesHaveBeenPopulated, instanceId,
                         "SwitchManager::PhyInterfacesHaveBeenPopulated") {}
