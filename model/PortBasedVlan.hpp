#pragma once

#include "model/Vlan.hpp"

/// A VLAN that only says which ports of a switch may forward to which.
class PortBasedVlan : public Vlan {
public:
    PortBasedVlan(Application& application, unsigned int id);

    /// Warns about tag settings in the element, which have no meaning here, and adds the port.
    void addPort(ManagedSwitchPort& port, _xmlNode* node) override;
};
