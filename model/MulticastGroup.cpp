#include "model/MulticastGroup.hpp"

#include <utility>

#include "model/ManagedSwitchPort.hpp"
#include "model/MulticastGroupPort.hpp"

MulticastGroup::MulticastGroup(Application& application, std::string ip, unsigned short vlanId)
    : _application(&application), _multicastGroupIp(std::move(ip)), _vlanId(vlanId) {}

MulticastGroup::~MulticastGroup() {
    for (auto const& port : _ports) {
        delete port.second;
    }
}

std::string MulticastGroup::getMulticastGroupIp() const {
    return _multicastGroupIp;
}

unsigned short MulticastGroup::getVlanId() const {
    return _vlanId;
}

void MulticastGroup::addPort(ManagedSwitchPort& port, _xmlNode* /*node*/) {
    MulticastGroupPort*& member = _ports[port.getId()];
    if (member == nullptr) {
        member = new MulticastGroupPort(*this, port);
    }
}
