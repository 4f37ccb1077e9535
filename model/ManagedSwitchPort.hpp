#pragma once

#include <array>
#include <iosfwd>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/MulticastGroupOrder.hpp"

class Application;
class ManagedSwitch;
class VlanPort;
struct _xmlNode;

/// One port of a switch, whatever the chip: its kind, its configured state and its memberships, which
/// it turns into operations of the chip.
///
/// Owned by its switch. Filled and configured on the management thread, under which alone the chip
/// operations may be called; the accessors may be called from any thread after start-up.
class ManagedSwitchPort {
public:
    /// What is connected to the port.
    enum class PortType : unsigned int {
        unknownPortType = 0,
        ethernetPortType = 1,
        smacPortType = 2,
        hmacPortType = 3,
        cpuPortType = 4,
        dspPortType = 5,
        switchInterlink = 6,
        notConnectedPortType = 7,
    };
    static constexpr std::size_t numberOfPortTypes = 8;

    /// Spanning-tree port state (IEEE 802.1D).
    enum class PortEnabledStatus : unsigned int { disabled = 0, listening = 1, learning = 2, forwarding = 3 };

    /// Speed in Mbit/s.
    enum class SpeedSetting : unsigned int { speed10 = 0, speed100 = 1, speed1000 = 2 };

    enum class DuplexSetting : unsigned int {
        half = 0,       ///< the Marvell port refuses it with a message
        full = 1,       ///< every chip
        forcedHalf = 2, ///< half duplex on a Marvell port
    };

    /// Pause frames (IEEE 802.3 annex 31B); every other value leaves them to negotiation.
    enum class FlowControlSetting : unsigned int { forcedOff = 0, forcedOn = 1 };

    enum class LinkSetting : unsigned int { disabled = 0, enabled = 1 };

    /// Cable crossover, as the PHY's two-bit code.
    enum class MdixSetting : unsigned int { mdi = 0, mdix = 1, reserved = 2, automatic = 3 };

    /// What happens to the IEEE 802.1Q tag of a frame that comes in.
    enum class IngressTagSetting : unsigned int { addTag = 0, validateTag = 1, addTagIfUntagged = 2 };

    /// What happens to the IEEE 802.1Q tag of a frame that goes out.
    enum class EgressTagSetting : unsigned int { stripTag = 0, validateTag = 1 };

    /// \param owner the switch; it outlives the port.
    /// \param type the document's word for what is connected; one that is not known is reported.
    /// \param state the document's word for the port state; one that is not known means disabled.
    /// \param node the port's element, or null.
    ManagedSwitchPort(ManagedSwitch& owner, unsigned int id, std::string type, std::string state,
                      _xmlNode* node);
    virtual ~ManagedSwitchPort();
    ManagedSwitchPort(ManagedSwitchPort const&) = delete;
    ManagedSwitchPort& operator=(ManagedSwitchPort const&) = delete;

    /// Brings the port's 802.1Q handling into the mode that all other operations build on.
    /// \return here and below: false when a register access failed or a setting is not possible.
    virtual bool initialise() = 0;

    /// Forces speed, duplex and flow control, then enables or disables the port.
    virtual bool setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                         LinkSetting link) = 0;

    /// Enables or disables the port.
    virtual bool setPort(LinkSetting link) = 0;

    /// The chip's own idea of the port's state.
    virtual unsigned short portStatus() = 0;

    /// Reads the port's counters and writes them as a table.
    virtual bool dumpStatistics(std::ostream& out) = 0;

    /// Makes the port a member of an 802.1Q VLAN with these tag rules.
    virtual bool addPortToVlan(unsigned short vlanId, IngressTagSetting ingress, EgressTagSetting egress) = 0;

    /// Sets the port's state in the spanning tree of a VLAN (IEEE 802.1Q, multiple spanning trees).
    virtual bool addPortToSpanningTree(unsigned short vlanId, PortEnabledStatus state) = 0;

    /// Lets frames that come in here go out there, port-based.
    virtual bool portBasedVlanRouteToPort(ManagedSwitchPort& destination) = 0;

    /// The same for several destinations at once; the list may be empty.
    virtual bool portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> destinations) = 0;

    /// Makes the port a receiver of a multicast group.
    /// \param ip the group's IPv4 address as text.
    virtual bool addPortToMulticastGroup(std::string ip, unsigned short vlanId) = 0;

    virtual bool removePortFromMulticastGroup(std::string ip, unsigned short vlanId) = 0;

    virtual bool setMdix(MdixSetting setting) = 0;

    /// Sets the port's counters to 0.
    virtual bool clearStatistics() = 0;

    /// Has the chip learn source addresses on this port, or not.
    virtual bool setPortLearningEnable(bool enable) = 0;

    unsigned int getId() const { return _id; }
    ManagedSwitch& getSwitch() const { return *_switch; }
    PortType getType() const { return _type; }

    /// The state that the document asks for.
    PortEnabledStatus getState() const { return _state; }

    /// The port's element in the document, or null.
    _xmlNode* getNode() const { return _node; }

    /// The name of a port type as messages and summaries show it.
    std::string const& getTypeName() const { return _portTypeNames[static_cast<std::size_t>(_type)]; }

    /// Adds a VLAN membership, which stays the VLAN's. A second one for the same VLAN is reported
    /// and left out.
    void addVlanPort(VlanPort* vlanPort);

    /// Adds a multicast membership, which stays the group's. A second one with the same address and
    /// VLAN is reported and left out.
    void addMulticastFilterPort(MulticastGroupPort* multicastGroupPort);

    /// The membership in the group of that address, compared as text, and VLAN; null if there is none.
    MulticastGroupPort* getMulticastGroupPort(std::string ip, unsigned short vlanId) const;

    /// Pushes the VLAN memberships into the chip: the 802.1Q ones one by one, then all port-based
    /// routes in one call, which is made even when there are none.
    void configureVlans();

    /// Initialises the port and sets its link up as its type asks for.
    void configurePorts();

    /// Pushes the multicast memberships into the chip.
    void configureMulticastFilters();

private:
    Application& application() const;
    void appendRoutes(VlanPort const& membership, std::list<ManagedSwitchPort*>& destinations);
    void configureTagBasedVlan(unsigned int vlanId, VlanPort const& membership);
    void configureLink(SpeedSetting speed);
    void reportStateWithoutLink() const;

    std::array<std::string, numberOfPortTypes> _portTypeNames;
    unsigned int _id;
    ManagedSwitch* _switch;
    _xmlNode* _node;
    PortType _type = PortType::unknownPortType;
    PortEnabledStatus _state = PortEnabledStatus::disabled;
    std::vector<MulticastGroupPort*> _multicastFilterPorts;
    std::map<unsigned int, VlanPort*> _vlanPorts;
    /// The same memberships by key.
    std::set<MulticastGroupPort*, MulticastGroupOrder> _multicastFilterPortsByKey;
};
