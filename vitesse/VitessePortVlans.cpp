// VLAN tagging and membership, port-based routes and multicast groups of VitessePort.

#include <algorithm>

#include "host/Application.hpp"
#include "vitesse/PortMacRegisters.hpp"
#include "vitesse/VitessePort.hpp"
#include "vitesse/VitessePortAccess.hpp"

using namespace vsc7390;

namespace {

using VlanTableCommand = VitesseSwitch::VlanTableCommand;

/// The entry with other ports; its command and flags stay.
VlanTableCommand withPorts(VlanTableCommand entry, unsigned int ports) {
    entry.word = analyser::vlan_access::ports.replaced(entry.word, ports);
    return entry;
}

unsigned int portsOf(VlanTableCommand const& entry) {
    return analyser::vlan_access::ports.in(entry.word);
}

} // namespace

VitesseSwitch* VitessePort::vitesseSwitch() const {
    return isOnChip() ? dynamic_cast<VitesseSwitch*>(&getSwitch()) // GCOVR_EXCL_BR_LINE: exists
                      : nullptr;
}

bool VitessePort::addPortToVlan(unsigned short vid, IngressTagSetting ingress, EgressTagSetting egress) {
    bool ingressSet = false;
    switch (ingress) {
    case IngressTagSetting::addTag:
        ingressSet = ingressAddTag(vid);
        break;
    case IngressTagSetting::validateTag:
        ingressSet = ingressValidateTag();
        break;
    case IngressTagSetting::addTagIfUntagged:
        ingressSet = ingressAddTagIfUntagged(vid);
        break;
    default:
        application().logError("VitessePort::addPortToVlan IngressTagSetting not valid\n");
    }
    if (!ingressSet) {
        return false;
    }
    bool egressSet = false;
    switch (egress) {
    case EgressTagSetting::stripTag:
        egressSet = egressStripTag(vid);
        break;
    case EgressTagSetting::validateTag:
        egressSet = egressValidateTag();
        break;
    default:
        application().logError("VitessePort::addPortToVlan invalid egressTag\n");
    }
    return egressSet && addPortToVlanTable(vid);
}

bool VitessePort::ingressAddTag(unsigned short vid) {
    return tagIngress(true, true, vid);
}

bool VitessePort::ingressAddTagIfUntagged(unsigned short vid) {
    return tagIngress(false, true, vid);
}

bool VitessePort::ingressValidateTag() {
    return tagIngress(false, false, 0);
}

bool VitessePort::tagIngress(bool ignoreTag, bool setPortVid, unsigned short vid) {
    namespace vlan = port_mac::categorizer_vlan;
    namespace drop = port_mac::categorizer_drop;
    enum { categorizerVlan, portVlan, macConfiguration, categorizerDrop, advancedLearning, numberOfChanges };
    std::array<Change, numberOfChanges> changes{};
    // GCOVR_EXCL_BR_START: a port has all of its registers, or the first is missing already
    if (!registerAt(port_mac::categorizerVlan, changes[categorizerVlan].location) ||
        !registerAt(port_mac::categorizerPortVlan, changes[portVlan].location) ||
        !registerAt(port_mac::macConfiguration, changes[macConfiguration].location) ||
        !registerAt(port_mac::categorizerDrop, changes[categorizerDrop].location)) {
        // GCOVR_EXCL_BR_STOP
        return false;
    }
    changes[advancedLearning].location = analyserRegister(analyser::advancedLearning);
    readAll(changes);
    auto& vlanValue = changes[categorizerVlan].value;
    vlanValue = vlan::ignoreTag.replaced(vlan::keepTag.cleared(vlanValue), ignoreTag ? 1 : 0);
    if (setPortVid) {
        auto& portVlanValue = changes[portVlan].value;
        portVlanValue = port_mac::categorizer_port_vlan::portVid.replaced(portVlanValue, vid);
    }
    auto& macValue = changes[macConfiguration].value;
    macValue = port_mac::mac_configuration::vlanAware.set(macValue);
    auto& dropValue = changes[categorizerDrop].value;
    dropValue = drop::untagged.cleared(drop::tagged.cleared(dropValue));
    auto& learning = changes[advancedLearning].value;
    learning = analyser::advanced_learning::notFromRefusedFrames.set(learning);
    return writeAll(changes);
}

bool VitessePort::egressStripTag(unsigned short /*vid*/) {
    return modifyMac(port_mac::transmitUpdateConfiguration,
                     [](unsigned int value) { return port_mac::transmit_update::insertTag.cleared(value); });
}

bool VitessePort::egressValidateTag() {
    namespace update = port_mac::transmit_update;
    return modifyMac(port_mac::transmitUpdateConfiguration, [](unsigned int value) {
        return update::untaggedVidEnable.cleared(update::insertTag.set(value));
    });
}

bool VitessePort::addPortToVlanTable(unsigned short vid) {
    VitesseSwitch* const owner = vitesseSwitch();
    VlanTableCommand entry;
    if (owner == nullptr || !owner->readVlanTableCommand(vid, entry)) {
        return false;
    }
    if (portsOf(entry) > analyser::vlan_access::highestUsedMask) {
        entry = withPorts(entry, 0);
    }
    entry.word = analyser::vlan_access::sourceCheck.set(entry.word);
    return owner->writeVlanTableCommand(vid, withPorts(entry, portsOf(entry) | bit()));
}

bool VitessePort::removePortFromVlanTable(unsigned short vid) {
    VitesseSwitch* const owner = vitesseSwitch();
    if (owner == nullptr) {
        return false;
    }
    VlanTableCommand entry;
    owner->readVlanTableCommand(vid, entry);
    return owner->writeVlanTableCommand(vid, withPorts(entry, portsOf(entry) & ~bit()));
}

bool VitessePort::addPortToSpanningTree(unsigned short /*vid*/, PortEnabledStatus /*state*/) {
    return true;
}

bool VitessePort::portBasedVlanRouteToPort(ManagedSwitchPort& port) {
    return setMaskBit(analyserRegister(analyser::sourceMasks + getId()), analyser::portBit(port.getId()),
                      true, FailedRead::endsChange);
}

bool VitessePort::portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> ports) {
    unsigned int bits = 0;
    for (ManagedSwitchPort const* const port : ports) {
        bits |= port == nullptr ? 0 : analyser::portBit(port->getId());
    }
    return setMaskBit(analyserRegister(analyser::sourceMasks + getId()), bits, true, FailedRead::endsChange);
}

bool VitessePort::addPortToMulticastGroup(std::string ipAddress, unsigned short vid) {
    if (!isOnChip()) {
        return false;
    }
    std::map<unsigned int, ManagedSwitchPort*> ports;
    // A group that is not there yet starts with this port.
    getSwitch().readMulticastGroup(ipAddress, vid, ports);
    ports.insert({getId(), this});
    return getSwitch().writeMulticastGroup(ipAddress, vid, ports);
}

bool VitessePort::removePortFromMulticastGroup(std::string ipAddress, unsigned short vid) {
    std::map<unsigned int, ManagedSwitchPort*> ports;
    if (!isOnChip() || !getSwitch().readMulticastGroup(ipAddress, vid, ports)) { // GCOVR_EXCL_BR_LINE: memory
        return false;
    }
    auto const own = std::find_if(ports.begin(), ports.end(), [this](auto const& member) {
        return member.second != nullptr && member.second->getId() == getId();
    });
    if (own == ports.end()) {
        return true;
    }
    ports.erase(own);
    return getSwitch().writeMulticastGroup(ipAddress, vid, ports);
}
