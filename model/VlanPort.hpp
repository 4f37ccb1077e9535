#pragma once

class ManagedSwitchPort;
class Vlan;

/// One port's membership in a VLAN; owned by the VLAN.
class VlanPort {
public:
    VlanPort(Vlan& vlan, ManagedSwitchPort& switchPort);
    virtual ~VlanPort();
    VlanPort(VlanPort const&) = delete;
    VlanPort& operator=(VlanPort const&) = delete;

    Vlan* getVlan() const { return _vlan; }
    ManagedSwitchPort* getSwitchPort() const { return _switchPort; }

private:
    Vlan* _vlan;
    ManagedSwitchPort* _switchPort;
};
