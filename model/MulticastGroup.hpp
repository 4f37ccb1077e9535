#pragma once

#include <map>
#include <string>
#include <string_view>

class Application;
class ManagedSwitchPort;
class MulticastGroupPort;
struct _xmlNode;

/// One forwarded IP multicast group: an address, a VLAN and the ports that receive it.
///
/// Owns its member objects. Built on the management thread.
class MulticastGroup {
public:
    /// Identifies a group. Refers to the text of an address, which has to live as long.
    struct Key {
        std::string_view ip;
        unsigned short vlanId;
    };

    /// \param ip the group's address as the document writes it; not parsed here.
    /// \param vlanId the VLAN in which the group is forwarded, 0 for none.
    MulticastGroup(Application& application, std::string ip, unsigned short vlanId);
    virtual ~MulticastGroup();
    MulticastGroup(MulticastGroup const&) = delete;
    MulticastGroup& operator=(MulticastGroup const&) = delete;

    std::string getMulticastGroupIp() const;
    unsigned short getVlanId() const;

    /// Valid as long as this object lives.
    Key getKey() const { return {_multicastGroupIp, _vlanId}; }

    /// Makes a port a member, unless a member with that port id is there already, whatever its
    /// switch. The node is not read.
    void addPort(ManagedSwitchPort& port, _xmlNode* node);

    /// The members by ascending port id.
    std::map<unsigned int, MulticastGroupPort*> const& getPorts() const { return _ports; }

private:
    std::map<unsigned int, MulticastGroupPort*> _ports;
    [[maybe_unused]] Application* _application;
    std::string _multicastGroupIp;
    unsigned short _vlanId;
};
