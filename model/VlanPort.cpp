#include "model/VlanPort.hpp"

VlanPort::VlanPort(Vlan& vlan, ManagedSwitchPort& switchPort) : _vlan(&vlan), _switchPort(&switchPort) {}

VlanPort::~VlanPort() = default;
