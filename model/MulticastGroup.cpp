#include "model/MulticastGroup.hpp"

#include <utility>

#include "model/ManagedSwitchPort.hpp"
#include "model/MulticastGroupPort.hpp"
#include "model/OwnedMap.hpp"

MulticastGroup::MulticastGroup(Application& application, std::string ip, unsigned short vlanId)
    : _application(&application), _multicastGroupIp(std::move(ip)), _vlanId(vlanId) {}

MulticastGroup::~MulticastGroup() {
    owned_map::deleteObjects(_ports);
}

std::string MulticastGroup::getMulticastGroupIp() const {
    return _multicastGroupIp;
}

unsigned short MulticastGroup::getVlanId() const {
    return _vlanId;
}

void MulticastGroup::addPort(ManagedSwitchPort& port, _xmlNode* /*node*/) {
    // GCOVR_EXCL_BR_START: memory
    owned_map::makeOnce(_ports, port.getId(), [&] { return new MulticastGroupPort(*this, port); });
    // GCOVR_EXCL_BR_STOP
}
