#include "model/ManagedSwitchPort.hpp"

#include <utility>

#include "host/Application.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/MulticastGroup.hpp"
#include "model/MulticastGroupPort.hpp"
#include "model/TagBasedVlanPort.hpp"
#include "model/Vlan.hpp"
#include "model/VlanPort.hpp"

namespace {

using PortType = ManagedSwitchPort::PortType;
using PortEnabledStatus = ManagedSwitchPort::PortEnabledStatus;

constexpr std::pair<char const*, PortType> portTypes[] = {
    {"smac", PortType::smacPortType}, {"hmac", PortType::hmacPortType},
    {"cpu", PortType::cpuPortType},   {"external", PortType::ethernetPortType},
    {"dsp", PortType::dspPortType},   {"switchInterlink", PortType::switchInterlink},
};

constexpr std::pair<char const*, PortEnabledStatus> portStates[] = {
    {"disabled", PortEnabledStatus::disabled},
    {"listening", PortEnabledStatus::listening},
    {"learning", PortEnabledStatus::learning},
    {"forwarding", PortEnabledStatus::forwarding},
};

/// Finds a word in a table and stores its value; returns false and stores nothing for an unknown one.
template <typename Table, typename Value>
bool lookUp(Table const& table, std::string const& word, Value& value) {
    for (auto const& row : table) {
        if (word == row.first) {
            value = row.second;
            return true;
        }
    }
    return false;
}

bool isPortBased(Vlan const& vlan) {
    return vlan.getType() == Vlan::Type::portBased;
}

} // namespace

ManagedSwitchPort::ManagedSwitchPort(ManagedSwitch& owner, unsigned int id, std::string type,
                                     std::string state, _xmlNode* node)
    : _portTypeNames{"unknownPortType", "ethernetPortType", "smacPortType",    "hmacPortType",
                     "cpuPortType",     "dspPortType",      "switchInterlink", "notConnectedPortType"},
      _id(id),
      _switch(&owner),
      _node(node) {
    if (!lookUp(portTypes, type, _type)) {
        application().logError("ManagedSwitchPort::ManagedSwitchPort: Unknown port type %s \n", type.c_str());
    }
    lookUp(portStates, state, _state);
}

ManagedSwitchPort::~ManagedSwitchPort() = default;

Application& ManagedSwitchPort::application() const {
    return *_switch->getApplication();
}

void ManagedSwitchPort::addVlanPort(VlanPort* vlanPort) {
    unsigned int const vlanId = vlanPort->getVlan()->getId();
    if (_vlanPorts.count(vlanId) != 0) {
        application().logError(
            "ManagedSwitchPort::addVlanPort. Attempt to add duplicate vlan to switch port.\n");
        return;
    }
    application().log(0, "ManagedSwitchPort::addVlanPort. Add vlan:%#x to port %d.%d.\n", vlanId,
                      _switch->getId(), _id);
    _vlanPorts[vlanId] = vlanPort;
}

void ManagedSwitchPort::addMulticastFilterPort(MulticastGroupPort* multicastGroupPort) {
    MulticastGroup const& group = *multicastGroupPort->getMulticastGroup();
    std::string const ip = group.getMulticastGroupIp();
    if (getMulticastGroupPort(ip, group.getVlanId()) != nullptr) {
        application().logError("ManagedSwitchPort::addMulticastFilterPort. Attempt to add duplicate "
                               "MulticastFilter to switch port.\n");
        return;
    }
    application().log(0, "ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:%s to port %d.%d.\n",
                      ip.c_str(), _switch->getId(), _id);
    addInOrder(multicastGroupPort, _multicastFilterPorts, _multicastFilterPortsByKey);
}

MulticastGroupPort* ManagedSwitchPort::getMulticastGroupPort(std::string ip, unsigned short vlanId) const {
    auto const found = _multicastFilterPortsByKey.find(MulticastGroup::Key{ip, vlanId});
    return found == _multicastFilterPortsByKey.end() ? nullptr : *found;
}

void ManagedSwitchPort::configureVlans() {
    application().log(3, "ManagedSwitchPort(%d.%d)::configureVlans %d vlans to configure\n", _switch->getId(),
                      _id, static_cast<int>(_vlanPorts.size()));
    std::list<ManagedSwitchPort*> destinations;
    for (auto const& entry : _vlanPorts) {
        switch (entry.second->getVlan()->getType()) {
        case Vlan::Type::portBased:
            appendRoutes(*entry.second, destinations);
            break;
        case Vlan::Type::tagBased:
            configureTagBasedVlan(entry.first, *entry.second);
            break;
        default:
            application().logError("ManagedSwitchPort::configureVlans: Vlan %d has no type \n", entry.first);
        }
    }
    portBasedVlanRouteToPort(destinations);
}

void ManagedSwitchPort::appendRoutes(VlanPort const& membership,
                                     std::list<ManagedSwitchPort*>& destinations) {
    Vlan const& vlan = *membership.getVlan();
    for (auto const& entry : vlan.getVlanPorts()) {
        Vlan const& memberVlan = *entry.second->getVlan();
        unsigned int const memberPortId = entry.second->getSwitchPort()->getId();
        if (memberVlan.getId() != vlan.getId() || !isPortBased(memberVlan) || memberPortId == _id) {
            continue;
        }
        application().log(4, "ManagedSwitchPort::configureVlans: VLAN %d Port %d linking to Port %d \n",
                          vlan.getId(), _id, memberPortId);
        // A chip can only route to ports of its own: the number counts, whatever switch the member is on.
        ManagedSwitchPort* const destination = _switch->getPort(memberPortId);
        if (destination != nullptr) {
            destinations.push_back(destination);
        }
    }
}

void ManagedSwitchPort::configureTagBasedVlan(unsigned int vlanId, VlanPort const& membership) {
    application().log(4, "ManagedSwitchPort::configureVlans: Port %d assigned VID %d \n", _id, vlanId);
    auto const* const tags = dynamic_cast<TagBasedVlanPort const*>(&membership); // GCOVR_EXCL_BR_LINE: exists
    auto const vid = static_cast<unsigned short>(vlanId);
    // GCOVR_EXCL_BR_START: members are of the VLAN's kind
    bool const configured = tags != nullptr &&
                            addPortToVlan(vid, tags->getIngressType(), tags->getEgressType()) &&
                            addPortToSpanningTree(vid, PortEnabledStatus::forwarding);
    // GCOVR_EXCL_BR_STOP
    if (!configured) {
        application().logError(
            "ManagedSwitchPort::configureVlans: addPortToVlan could not vlanId %d to Port %d \n", vlanId,
            _id);
    }
}

void ManagedSwitchPort::configurePorts() {
    application().log(2, "ManagedSwitchPort::configurePorts:  Configuring Port %d as %s\n", _id,
                      getTypeName().c_str());
    initialise();
    switch (_type) {
    case PortType::smacPortType:
        configureLink(SpeedSetting::speed100);
        reportStateWithoutLink();
        // The SMAC is wired straight through: this end has to cross over.
        setMdix(MdixSetting::mdix);
        break;
    case PortType::hmacPortType:
        configureLink(SpeedSetting::speed100);
        reportStateWithoutLink();
        break;
    case PortType::switchInterlink:
        configureLink(SpeedSetting::speed1000);
        break;
    default:
        break;
    }
}

void ManagedSwitchPort::configureLink(SpeedSetting speed) {
    LinkSetting const link =
        _state == PortEnabledStatus::forwarding ? LinkSetting::enabled : LinkSetting::disabled;
    setPort(speed, DuplexSetting::full, FlowControlSetting::forcedOn, link);
}

void ManagedSwitchPort::reportStateWithoutLink() const {
    if (_state == PortEnabledStatus::listening || _state == PortEnabledStatus::learning) {
        application().logError("ManagedSwitchPort::configurePorts:  Unknown link type Port %d as %d\n", _id,
                               static_cast<unsigned int>(_type));
    }
}

void ManagedSwitchPort::configureMulticastFilters() {
    for (MulticastGroupPort* const member : _multicastFilterPorts) {
        MulticastGroup const& group = *member->getMulticastGroup();
        std::string const ip = group.getMulticastGroupIp();
        application().log(
            3,
            "ManagedSwitchPort::configurePorts: Configuring MultiCastFilters for port%d Address %s Vlan %d\n",
            _id, ip.c_str(), group.getVlanId());
        addPortToMulticastGroup(ip, group.getVlanId());
    }
}
