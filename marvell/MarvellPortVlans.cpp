// 802.1Q settings, VLAN and spanning-tree membership and port-based routes of MarvellPort.

#include <limits>

#include "host/Application.hpp"
#include "marvell/MarvellPort.hpp"
#include "marvell/PortRegisters.hpp"

namespace {

using VtuEgressState = MarvellSwitch::VtuEgressState;

unsigned short withRoute(unsigned short map, ManagedSwitchPort const& target) {
    unsigned int const port = target.getId();
    if (port >= static_cast<unsigned int>(std::numeric_limits<unsigned int>::digits)) {
        return map;
    }
    return static_cast<unsigned short>(map | port_registers::vlan_map::routeTo(port));
}

} // namespace

MarvellSwitch* MarvellPort::marvellSwitch() const {
    return hasRegisters() ? dynamic_cast<MarvellSwitch*>(&getSwitch()) // GCOVR_EXCL_BR_LINE: exists
                          : nullptr;
}

bool MarvellPort::addPortToVlan(unsigned short vlanId, IngressTagSetting ingress, EgressTagSetting egress) {
    bool tagged = false;
    switch (ingress) {
    case IngressTagSetting::addTag:
        tagged = ingressAddTag(vlanId);
        break;
    case IngressTagSetting::validateTag:
        tagged = ingressValidateTag();
        break;
    case IngressTagSetting::addTagIfUntagged:
        tagged = ingressAddTagIfUntagged(vlanId);
        break;
    default:
        getSwitch().getApplication()->logError("MarvellPort::addPortToVlan IngressTagSetting not valid\n");
    }
    return tagged && addPortToVlanTable(vlanId, egress);
}

bool MarvellPort::ingressAddTag(unsigned short vlanId) {
    using namespace port_registers::default_vlan;
    return modifyPort(port_registers::defaultVlan, [vlanId](unsigned short value) {
        return forceDefaultVid.set(defaultVid.replaced(value, vlanId));
    });
}

bool MarvellPort::ingressAddTagIfUntagged(unsigned short vlanId) {
    using namespace port_registers::default_vlan;
    return modifyPort(port_registers::defaultVlan, [vlanId](unsigned short value) {
        return forceDefaultVid.cleared(defaultVid.replaced(value, vlanId));
    });
}

bool MarvellPort::ingressValidateTag() {
    return modifyPort(port_registers::defaultVlan, [](unsigned short value) {
        return port_registers::default_vlan::forceDefaultVid.cleared(value);
    });
}

bool MarvellPort::ieee802_1QMode(Ieee802_1QModeVal mode) {
    return modifyPort(port_registers::portControl2, [mode](unsigned short value) {
        return port_registers::port_control_2::ieee8021QMode.replaced(value, static_cast<unsigned int>(mode));
    });
}

bool MarvellPort::addPortToVlanTable(unsigned short vlanId, EgressTagSetting egress) {
    if (egress != EgressTagSetting::stripTag && egress != EgressTagSetting::validateTag) {
        getSwitch().getApplication()->logError(
            "MarvellPort::addPortToVlanTable EgressTagSetting not valid\n");
        return false;
    }
    MarvellSwitch* const owner = marvellSwitch();
    if (owner == nullptr) {
        return false;
    }
    if (!owner->readVlanTableCommand(vlanId)) {
        owner->initialiseVlan(vlanId); // unchecked on purpose: what follows loads the entry in any case
    }
    return changeMembership(*owner, vlanId,
                            egress == EgressTagSetting::stripTag ? VtuEgressState::untagged
                                                                 : VtuEgressState::tagged);
}

bool MarvellPort::removePortFromVlanTable(unsigned short vlanId) {
    MarvellSwitch* const owner = marvellSwitch();
    return owner != nullptr && changeMembership(*owner, vlanId, VtuEgressState::notMember);
}

bool MarvellPort::changeMembership(MarvellSwitch& owner, unsigned short vlanId, VtuEgressState state) {
    return owner.writeVlanTable({{portNumber(), state}}) && // GCOVR_EXCL_BR_LINE: memory
           owner.writeVlanTableCommand(vlanId);             // GCOVR_EXCL_BR_LINE: memory
}

bool MarvellPort::addPortToSpanningTree(unsigned short spanningTreeId, PortEnabledStatus state) {
    MarvellSwitch* const owner = marvellSwitch();
    if (owner == nullptr) {
        return false;
    }
    if (!owner->readSpanningTreeTableCommand(spanningTreeId)) {
        owner->initialiseSpanningTree(spanningTreeId); // unchecked on purpose, likewise
    }
    return owner->writeSpanningTreeTable({{portNumber(), state}}) && // GCOVR_EXCL_BR_LINE: memory
           owner->writeSpanningTreeTableCommand(spanningTreeId);     // GCOVR_EXCL_BR_LINE: memory
}

bool MarvellPort::portBasedVlanRouteToPort(ManagedSwitchPort& target) {
    return modifyPort(port_registers::portBasedVlanMap,
                      [&target](unsigned short value) { return withRoute(value, target); });
}

bool MarvellPort::portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> targets) {
    return modifyPort(port_registers::portBasedVlanMap, [&targets](unsigned short value) {
        for (ManagedSwitchPort const* const target : targets) {
            value = target == nullptr ? value : withRoute(value, *target);
        }
        return value;
    });
}

bool MarvellPort::addPortToMulticastGroup(std::string /*address*/, unsigned short /*vlanId*/) {
    getSwitch().getApplication()->log(
        1, "MarvellPort::addPortToMulticastFilter Unimplemented Function for Marvell\n");
    return false;
}

bool MarvellPort::removePortFromMulticastGroup(std::string /*address*/, unsigned short /*vlanId*/) {
    getSwitch().getApplication()->log(
        1, "MarvellPort::removePortToMulticastGroup Unimplemented Function for Marvell\n");
    return false;
}
