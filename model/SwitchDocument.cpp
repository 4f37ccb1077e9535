#include "model/SwitchDocument.hpp"

#include <string>
#include <utility>

#include "host/Xml.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/TrunkGroup.hpp"

namespace {

// Not by a stream, which would keep it to itself when it runs out of memory halfway.
template <typename Id> std::string query(char const* element, Id id, char const* children) {
    std::string xpath = "//";
    xpath += element;
    xpath += "[@id=" + std::to_string(id) + "]";
    xpath += children;
    return xpath;
}

} // namespace

SwitchDocument::PortElement::PortElement(xmlNodePtr element)
    : node(element),
      idText(XmlText::attribute(element, "id")),
      hasId(idText.parseDecimal(id)),
      connectedTo(XmlText::attribute(element, "connectedTo")),
      portStatus(XmlText::attribute(element, "portStatus")) {}

SwitchDocument::SwitchDocument(Xml& document, unsigned int switchId)
    : _document(document), _switchId(switchId) {}

XmlNodes SwitchDocument::switches() const {
    return XmlNodes(_document.find(query("switch", _switchId, "")));
}

XmlNodes SwitchDocument::ports() const {
    return XmlNodes(_document.find(query("switch", _switchId, "/port")));
}

XmlNodes SwitchDocument::portsOfAllSwitches() const {
    return XmlNodes(_document.find("//switch/port"));
}

XmlNodes SwitchDocument::trunks() const {
    return XmlNodes(_document.find(query("switch", _switchId, "/trunk")));
}

XmlNodes SwitchDocument::trunkMembers(int trunkId) const {
    return XmlNodes(_document.find(query("trunk", trunkId, "/port")));
}

void SwitchDocument::createTrunkGroups(ManagedSwitch& owner,
                                       std::function<void()> const& reportTrunkWithoutId,
                                       std::function<void(int)> const& reportPortWithoutId) const {
    unsigned int numberOfTrunks = 0;
    for (xmlNodePtr const node : trunks()) {
        XmlText const id = XmlText::attribute(node, "id");
        if (!id.isPresent()) {
            reportTrunkWithoutId();
        }
        auto const trunkId = static_cast<unsigned int>(id.toInteger(-1));
        std::pair<unsigned int, TrunkGroup*> entry(numberOfTrunks, new TrunkGroup(trunkId));
        owner.insertTrunkGroup(entry);
        ++numberOfTrunks;
    }
    for (unsigned int key = 0; key < numberOfTrunks; ++key) {
        TrunkGroup& trunkGroup = *owner.getTrunkGroup(key);
        for (xmlNodePtr const node : trunkMembers(trunkGroup.getId())) {
            XmlText const id = XmlText::attribute(node, "id");
            if (!id.isPresent()) {
                reportPortWithoutId(trunkGroup.getId());
            }
            auto const portId = static_cast<unsigned int>(id.toInteger(-1));
            trunkGroup.insertPort({portId, owner.getPort(portId)});
        }
    }
}
