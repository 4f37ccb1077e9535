#pragma once

class ManagedSwitchPort;
class MulticastGroup;

/// One port's membership in a multicast group; owned by the group.
class MulticastGroupPort {
public:
    /// Registers itself with the port.
    MulticastGroupPort(MulticastGroup& multicastGroup, ManagedSwitchPort& switchPort);
    virtual ~MulticastGroupPort();
    MulticastGroupPort(MulticastGroupPort const&) = delete;
    MulticastGroupPort& operator=(MulticastGroupPort const&) = delete;

    MulticastGroup* getMulticastGroup() const { return _multicastGroup; }
    ManagedSwitchPort* getSwitchPort() const { return _switchPort; }

private:
    MulticastGroup* _multicastGroup;
    ManagedSwitchPort* _switchPort;
};
