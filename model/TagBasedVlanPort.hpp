#pragma once

#include "model/ManagedSwitchPort.hpp"
#include "model/VlanPort.hpp"

struct _xmlNode;

/// One port's membership in an 802.1Q VLAN and the port's tag rules there.
class TagBasedVlanPort : public VlanPort {
public:
    /// What a setting holds when the document does not say it, or says nothing that is known: a
    /// value that every chip driver refuses, so that a mistake never opens a VLAN.
    static constexpr auto unknownIngress = static_cast<ManagedSwitchPort::IngressTagSetting>(3);
    static constexpr auto unknownEgress = static_cast<ManagedSwitchPort::EgressTagSetting>(2);

    /// Reads the settings from the member's element, reports one that is missing, and registers
    /// itself with the port.
    TagBasedVlanPort(Vlan& vlan, ManagedSwitchPort& switchPort, _xmlNode* node);

    ManagedSwitchPort::IngressTagSetting getIngressType() const { return _ingressType; }
    ManagedSwitchPort::EgressTagSetting getEgressType() const { return _egressType; }

private:
    ManagedSwitchPort::IngressTagSetting _ingressType = unknownIngress;
    ManagedSwitchPort::EgressTagSetting _egressType = unknownEgress;
};
