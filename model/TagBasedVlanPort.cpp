#include "model/TagBasedVlanPort.hpp"

#include "host/Application.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/Vlan.hpp"
#include "model/XmlText.hpp"

namespace {

using Ingress = ManagedSwitchPort::IngressTagSetting;
using Egress = ManagedSwitchPort::EgressTagSetting;

Ingress ingressOf(XmlText const& text) {
    if (text.equals("addTag")) {
        return Ingress::addTag;
    }
    if (text.equals("validateTag")) {
        return Ingress::validateTag;
    }
    if (text.equals("addTagIfUntagged")) {
        return Ingress::addTagIfUntagged;
    }
    return TagBasedVlanPort::unknownIngress;
}

Egress egressOf(XmlText const& text) {
    if (text.equals("stripTag")) {
        return Egress::stripTag;
    }
    if (text.equals("validateTag")) {
        return Egress::validateTag;
    }
    return TagBasedVlanPort::unknownEgress;
}

void reportIfAbsent(XmlText const& text, char const* name, Vlan const& vlan, ManagedSwitchPort& port) {
    if (!text.isPresent()) {
        vlan.getApplication()->logError(
            "TagBasedVlanPort::TagBasedVlanPort vlan %#x port %d.%d has no attribute %s\n", vlan.getId(),
            port.getSwitch().getId(), port.getId(), name);
    }
}

} // namespace

TagBasedVlanPort::TagBasedVlanPort(Vlan& vlan, ManagedSwitchPort& switchPort, _xmlNode* node)
    : VlanPort(vlan, switchPort) {
    XmlText const ingress = XmlText::attribute(node, "ingress");
    XmlText const egress = XmlText::attribute(node, "egress");
    vlan.getApplication()->log(
        3,
        "TagBasedVlanPort::TagBasedVlanPort vlan %#x switch %d port %d ingressString:%s "
        "egressString:%s created\n",
        vlan.getId(), switchPort.getSwitch().getId(), switchPort.getId(), ingress.printable(),
        egress.printable());
    reportIfAbsent(ingress, "ingress", vlan, switchPort);
    reportIfAbsent(egress, "egress", vlan, switchPort);
    _ingressType = ingressOf(ingress);
    _egressType = egressOf(egress);
    switchPort.addVlanPort(this);
}
