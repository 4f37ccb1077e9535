#pragma once

#include "model/VlanPort.hpp"

/// One port's membership in a port-based VLAN.
class PortBasedVlanPort : public VlanPort {
public:
    /// Registers itself with the port.
    PortBasedVlanPort(Vlan& vlan, ManagedSwitchPort& switchPort);
};
