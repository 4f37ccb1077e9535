#include "model/MulticastGroupPort.hpp"

#include "model/ManagedSwitchPort.hpp"

MulticastGroupPort::MulticastGroupPort(MulticastGroup& multicastGroup, ManagedSwitchPort& switchPort)
    : _multicastGroup(&multicastGroup), _switchPort(&switchPort) {
    switchPort.addMulticastFilterPort(this);
}

MulticastGroupPort::~MulticastGroupPort() = default;
