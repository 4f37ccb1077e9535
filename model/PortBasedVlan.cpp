#include "model/PortBasedVlan.hpp"

#include "host/Application.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/OwnedMap.hpp"
#include "model/PortBasedVlanPort.hpp"
#include "model/XmlText.hpp"

PortBasedVlan::PortBasedVlan(Application& application, unsigned int id)
    : Vlan(application, id, Type::portBased) {}

void PortBasedVlan::addPort(ManagedSwitchPort& port, _xmlNode* node) {
    if (XmlText::attribute(node, "ingress").isPresent()) {
        getApplication()->logWarning("PortBasedVlan::addPort. Ignoring attribute ingress\n");
    }
    if (XmlText::attribute(node, "egress").isPresent()) {
        getApplication()->logWarning("PortBasedVlan::addPort. Ignoring attribute egress\n");
    }
    // GCOVR_EXCL_BR_START: memory
    owned_map::makeOnce(members(), port.getId(), [&] { return new PortBasedVlanPort(*this, port); });
    // GCOVR_EXCL_BR_STOP
}
