#include "model/Vlan.hpp"

#include "model/OwnedMap.hpp"
#include "model/VlanPort.hpp"

Vlan::Vlan(Application& application, unsigned int id, Type type)
    : _application(&application), _id(id), _type(type) {}

Vlan::~Vlan() {
    owned_map::deleteObjects(_vlanPorts);
}
