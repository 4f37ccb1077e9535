#pragma once

#include <map>

class Application;
class ManagedSwitchPort;
class VlanPort;
struct _xmlNode;

/// A VLAN of the configuration with its member ports, across switches.
///
/// Owns its member objects. Members are keyed by port id alone, so two switches' ports of the same
/// number cannot both be members. Built on the management thread.
class Vlan {
public:
    enum class Type : unsigned int {
        portBased = 1, ///< says which ports may forward to which
        tagBased = 2,  ///< IEEE 802.1Q
    };

    Vlan(Application& application, unsigned int id, Type type);
    virtual ~Vlan();
    Vlan(Vlan const&) = delete;
    Vlan& operator=(Vlan const&) = delete;

    /// Makes a port a member, unless a member with that port id is there already.
    /// \param node the member's element in the document.
    virtual void addPort(ManagedSwitchPort& port, _xmlNode* node) = 0;

    unsigned int getId() const { return _id; }
    Type getType() const { return _type; }
    Application* getApplication() const { return _application; }

    /// The members by ascending port id.
    std::map<unsigned int, VlanPort*> const& getVlanPorts() const { return _vlanPorts; }

protected:
    std::map<unsigned int, VlanPort*>& members() { return _vlanPorts; }

private:
    std::map<unsigned int, VlanPort*> _vlanPorts;
    Application* _application;
    unsigned int _id;
    Type _type;
};
