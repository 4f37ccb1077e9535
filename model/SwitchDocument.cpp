#include "model/SwitchDocument.hpp"

#include <stdexcept>
#include <string>
#include <utility>

#include "host/Application.hpp"
#include "host/Xml.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/TrunkGroup.hpp"

namespace {

// Not by a stream, which would swallow a std::bad_alloc.
template <typename Id> std::string query(char const* element, Id id, char const* children) {
    std::string xpath = "//";
    xpath += element;
    xpath += "[@id=" + std::to_string(id) + "]";
    xpath += children;
    return xpath;
}

} // namespace

SwitchDocument::SwitchDocument(Xml& document, ManagedSwitch& owner, Wording const& wording)
    : _document(document), _owner(owner), _wording(wording) {}

bool SwitchDocument::hasSwitch() const {
    int const count = XmlNodes(_document.find(query("switch", _owner.getId(), ""))).count();
    if (count > 1) {
        _owner.getApplication()->logInfo("ManagedSwitch::ManagedSwitch: Unknown switch count %d\n", count);
        throw std::runtime_error("Roting xml or other catastrophic error");
    }
    return count == 1;
}

XmlNodes SwitchDocument::ports() const {
    return XmlNodes(_document.find(query("switch", _owner.getId(), "/port")));
}

XmlNodes SwitchDocument::portsOfAllSwitches() const {
    return XmlNodes(_document.find("//switch/port"));
}

void SwitchDocument::createPorts(XmlNodes const& elements, InsertPort const& insertPort) const {
    Application& application = *_owner.getApplication();
    char const* const speaker = _wording.speaker;
    unsigned int const switchId = _owner.getId();
    application.log(2, "%s(%d): %d ports to configure\n", speaker, switchId, elements.count());
    for (xmlNodePtr const element : elements) {
        XmlText const idText = XmlText::attribute(element, "id");
        int id = ManagedSwitch::noNumber;
        if (!idText.parseDecimal(id)) {
            application.logError("%s(%d): Port id is not a valid integer value%s%s%s", speaker, switchId,
                                 _wording.showsInvalidId ? " " : "",
                                 _wording.showsInvalidId ? idText.printable() : "",
                                 _wording.showsInvalidId ? "\n" : "");
        }
        XmlText const connectedTo = XmlText::attribute(element, "connectedTo");
        XmlText const portStatus = XmlText::attribute(element, "portStatus");
        application.log(2, "%s(%d): configure port %d connected to %s\n", speaker, switchId, id,
                        connectedTo.text());
        application.log(2, "%s(%d): configure port %d %s %s\n", speaker, switchId, id, _wording.toState,
                        portStatus.text());
        insertPort(static_cast<unsigned int>(id), connectedTo.text(), portStatus.text(), element);
    }
}

void SwitchDocument::createTrunkGroups() const {
    Application& application = *_owner.getApplication();
    unsigned int numberOfTrunks = 0;
    for (xmlNodePtr const node : XmlNodes(_document.find(query("switch", _owner.getId(), "/trunk")))) {
        XmlText const id = XmlText::attribute(node, "id");
        if (!id.isPresent()) {
            application.logError("%s(%d): Turnk Id is not a valid integer value\n", _wording.speaker,
                                 _owner.getId());
        }
        auto const trunkId = static_cast<unsigned int>(id.toInteger(ManagedSwitch::noNumber));
        // GCOVR_EXCL_BR_START: memory
        std::pair<unsigned int, TrunkGroup*> entry(numberOfTrunks, new TrunkGroup(trunkId));
        // GCOVR_EXCL_BR_STOP
        _owner.insertTrunkGroup(entry);
        ++numberOfTrunks;
    }
    for (unsigned int key = 0; key < numberOfTrunks; ++key) {
        TrunkGroup& trunkGroup = *_owner.getTrunkGroup(key);
        for (xmlNodePtr const node : XmlNodes(_document.find(query("trunk", trunkGroup.getId(), "/port")))) {
            XmlText const id = XmlText::attribute(node, "id");
            if (!id.isPresent()) {
                application.logError("%s(%d): port id in Trunk Id %d is not a valid integer value\n",
                                     _wording.speaker, _owner.getId(), trunkGroup.getId());
            }
            auto const portId = static_cast<unsigned int>(id.toInteger(ManagedSwitch::noNumber));
            trunkGroup.insertPort({portId, _owner.getPort(portId)});
        }
    }
}
