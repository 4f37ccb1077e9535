#pragma once

#include "model/Vlan.hpp"

/// An IEEE 802.1Q VLAN, with a tag rule for each member port.
class TagBasedVlan : public Vlan {
public:
    TagBasedVlan(Application& application, unsigned int id);

    /// Reads the member's tag settings from the element and adds the port.
    void addPort(ManagedSwitchPort& port, _xmlNode* node) override;

    /// The members by ascending port id.
    std::map<unsigned int, VlanPort*>& getPorts() { return members(); }
};
