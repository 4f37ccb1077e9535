#include "model/TrunkGroup.hpp"

TrunkGroup::TrunkGroup(unsigned int id) : _id(id) {}

TrunkGroup::~TrunkGroup() = default;

int TrunkGroup::getId() const {
    return static_cast<int>(_id);
}

void TrunkGroup::insertPort(std::pair<unsigned int const, ManagedSwitchPort*> port) {
    _trunkedPorts.insert(port);
}

std::map<unsigned int const, ManagedSwitchPort*> TrunkGroup::getTrunkedPorts() const {
    return _trunkedPorts;
}
