// What SwitchManager builds from the document: switches, VLANs, trunks, multicast groups.

#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "host/MutexLock.hpp"
#include "host/ThreadedApplication.hpp"
#include "host/Xml.hpp"
#include "manager/SwitchManager.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/MulticastGroup.hpp"
#include "model/PortBasedVlan.hpp"
#include "model/TagBasedVlan.hpp"
#include "model/XmlNodes.hpp"
#include "model/XmlText.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace {

constexpr unsigned short ageTimeNotConfigured = std::numeric_limits<unsigned short>::max();

/// The manager has no address of its own to give to a switch.
constexpr unsigned char noMacAddress[6] = {};

bool isVlanElement(xmlNode const* node) {
    return node != nullptr && node->name != nullptr &&
           std::strcmp(reinterpret_cast<char const*>(node->name), "vlan") == 0; // NOLINT
}

xmlNode const* parentOf(xmlNode const* node) {
    return node == nullptr ? nullptr : node->parent; // GCOVR_EXCL_BR_LINE: each has two parents
}

xmlNode const* grandparentOf(xmlNode const* node) {
    return parentOf(parentOf(node));
}

unsigned short ageTimeOf(xmlNode const* switchElement) {
    return static_cast<unsigned short>(
        XmlText::attribute(switchElement, "atuAgeTime").toInteger(ageTimeNotConfigured));
}

/// A decimal number in an attribute, ManagedSwitch::noNumber when there is none.
int numberIn(xmlNode const* element, char const* name) {
    int number = ManagedSwitch::noNumber;
    XmlText::attribute(element, name).parseDecimal(number);
    return number;
}

// Not by a stream, which would swallow a std::bad_alloc.
std::string memberQuery(unsigned int vlanId) {
    constexpr int hexadecimalBase = 16;
    char hexadecimal[2 * sizeof vlanId];
    char* const end =
        std::to_chars(std::begin(hexadecimal), std::end(hexadecimal), vlanId, hexadecimalBase).ptr;
    return "//vlan[@id=" + std::string(hexadecimal, end) + "]/port";
}

/// The VLAN in which an element has a multicast group forwarded, 0 for none.
unsigned short vlanIdOf(xmlNode const* groupElement) {
    int vlanId = 0;
    xmlNode const* const grandparent = grandparentOf(groupElement);
    if (isVlanElement(grandparent)) {
        XmlText::attribute(grandparent, "id").parseDecimal(vlanId);
    }
    return static_cast<unsigned short>(vlanId);
}

} // namespace

void SwitchManager::detectSwitches() {
    XmlNodes const nodes(_xml.find("//switches/switch"));
    auto const count = static_cast<unsigned short>(nodes.count());
    getApplication().log(3, "SwitchManager::detectSwitches %d Switches discovered in xml\n", count);
    DetectedSwitches marvellSwitches;
    DetectedSwitches vitesseSwitches;
    for (unsigned short index = 0; index < count; ++index) {
        detectSwitch(nodes.begin()[index], marvellSwitches, vitesseSwitches);
    }
    for (auto const& detected : marvellSwitches) {
        createMarvellManagedSwitch(detected.first, detected.second);
    }
    for (auto const& detected : vitesseSwitches) {
        createVitesseManagedSwitch(detected.first, detected.second);
    }
}

void SwitchManager::detectSwitch(_xmlNode* node, DetectedSwitches& marvellSwitches,
                                 DetectedSwitches& vitesseSwitches) {
    XmlText const model = XmlText::attribute(node, "switchModel");
    XmlText const idText = XmlText::attribute(node, "id");
    auto const id = static_cast<unsigned short>(idText.toInteger(0));
    if (!model.isPresent()) {
        getApplication().logError("SwitchManager::detectSwitches switch %s has no attribute switchModel\n",
                                  idText.printable());
        return;
    }
    _atuAgeTimes[id] = ageTimeOf(node);
    if (model.equals(MarvellSwitch::_xmlDescriptionString) &&
        (MarvellSwitch::detectSwitch(getApplication(), id, _noHardwareAccess) || _noHardwareAccess)) {
        marvellSwitches.insert({id, noMacAddress});
    }
    if (model.equals(VitesseSwitch::_xmlDescriptionString) &&
        (VitesseSwitch::detectSwitch(getApplication(), _noHardwareAccess) || _noHardwareAccess)) {
        vitesseSwitches.insert({id, noMacAddress});
    }
}

template <typename Switch>
void SwitchManager::createManagedSwitch(unsigned int id, unsigned char const* macAddress,
                                        std::string const& operation) {
    MutexLock const lock(_managedSwitchesMutex);
    getApplication().log(0, "%s %d\n", operation.c_str(), id);
    if (_managedSwitches.count(id) != 0) {
        throw std::runtime_error(operation + " Duplicate switch response");
    }
    auto created = std::make_unique<Switch>(getApplication(), id, macAddress, _xml, _noHardwareAccess);
    ManagedSwitch*& entry = _managedSwitches[id];
    entry = created.release();
}

void SwitchManager::createMarvellManagedSwitch(unsigned int id, unsigned char const* macAddress) {
    createManagedSwitch<MarvellSwitch>(id, macAddress, "SwitchManager::createMarvellManagedSwitch");
}

void SwitchManager::createVitesseManagedSwitch(unsigned int id, unsigned char const* macAddress) {
    createManagedSwitch<VitesseSwitch>(id, macAddress, "SwitchManager::createVitesseManagedSwitch");
}

void SwitchManager::configureSwitchSettings() {
    getApplication().log(0, "SwitchManager::configureSwitchSettings\n");
    forEachSwitch([this](ManagedSwitch& managedSwitch) { applyAgeTime(managedSwitch); });
}

void SwitchManager::applyAgeTime(ManagedSwitch& managedSwitch) {
    auto* const marvellSwitch = dynamic_cast<MarvellSwitch*>(&managedSwitch); // GCOVR_EXCL_BR_LINE: exists
    if (marvellSwitch == nullptr) {
        return;
    }
    unsigned int const id = managedSwitch.getId();
    auto const entry = _atuAgeTimes.find(id);
    if (entry == _atuAgeTimes.end() || entry->second == ageTimeNotConfigured) { // GCOVR_EXCL_BR_LINE: found
        getApplication().log(2,
                             "SwitchManager::configureSwitchSettings switch %d ATU Age Time not configured, "
                             "using switch default\n",
                             id);
        return;
    }
    if (!_noHardwareAccess) {
        getApplication().logInfo(
            "SwitchManager::configureSwitchSettings setting switch %d ATU Age Time to %d seconds\n", id,
            entry->second);
        marvellSwitch->setATUAgeTime(entry->second);
    }
}

template <typename Configure> void SwitchManager::forEachSwitch(Configure configure) {
    for (auto const& entry : _managedSwitches) {
        configure(*entry.second);
    }
}

template <typename Configure> void SwitchManager::forEachSwitchWithHardware(Configure configure) {
    if (!_noHardwareAccess) {
        forEachSwitch(configure);
    }
}

void SwitchManager::configureVlans() {
    XmlNodes const nodes(_xml.find("//vlan"));
    getApplication().log(0, "SwitchManager::configureVlans %d vlans to configure\n", nodes.count());
    for (xmlNodePtr const node : nodes) {
        addVlan(node);
    }
    for (auto const& entry : _vlans) {
        for (xmlNodePtr const node : XmlNodes(_xml.find(memberQuery(entry.first)))) {
            addVlanPort(*entry.second, node);
        }
    }
    forEachSwitchWithHardware([](ManagedSwitch& managedSwitch) { managedSwitch.configureVlans(); });
}

void SwitchManager::addVlan(_xmlNode* vlanElement) {
    unsigned int vlanId = std::numeric_limits<unsigned int>::max();
    XmlText const idText = XmlText::attribute(vlanElement, "id");
    idText.parseHexadecimal(vlanId);
    XmlText const type = XmlText::attribute(vlanElement, "typeOfVlan");
    if (!type.isPresent()) {
        getApplication().logError("SwitchManager::addVlan. vlan %s has no attribute typeOfVlan\n",
                                  idText.printable());
        return;
    }
    if (_vlans.count(vlanId) != 0) {
        getApplication().logError("SwitchManager::addVlan. Attempt to add duplicate vlan %#x\n", vlanId);
        return;
    }
    std::unique_ptr<Vlan> vlan;
    if (type.equals("tagBasedVlan")) {
        getApplication().log(0, "SwitchManager::addVlan. Adding TagBasedVlan %#x\n", vlanId);
        vlan = std::make_unique<TagBasedVlan>(getApplication(), vlanId);
    } else {
        getApplication().log(0, "SwitchManager::addVlan. Adding PortBasedVlan %#x\n", vlanId);
        vlan = std::make_unique<PortBasedVlan>(getApplication(), vlanId);
    }
    Vlan*& entry = _vlans[vlanId];
    entry = vlan.release();
}

void SwitchManager::addVlanPort(Vlan& vlan, _xmlNode* portElement) {
    ManagedSwitchPort* const port =
        findMember(numberIn(portElement, "switchId"), numberIn(portElement, "portId"), "addVlanPort", "vlan");
    if (port != nullptr) {
        vlan.addPort(*port, portElement);
    }
}

/// The port that an element of the document names, or null after a message.
ManagedSwitchPort* SwitchManager::findMember(int switchId, int portId, char const* operation,
                                             char const* what) {
    ManagedSwitch* const managedSwitch = getManagedSwitch(static_cast<unsigned int>(switchId));
    if (managedSwitch == nullptr) {
        // On purpose, this names the same operation for VLANs and multicast groups.
        getApplication().logError("SwitchManager::addVlanPort. Attempt to add %s to unknown switch %d\n",
                                  what, switchId);
        return nullptr;
    }
    ManagedSwitchPort* const port = managedSwitch->getPort(static_cast<unsigned int>(portId));
    if (port == nullptr) {
        getApplication().logError("SwitchManager::%s. Attempt to add %s to unknown port %d.%d\n", operation,
                                  what, switchId, portId);
    }
    return port;
}

void SwitchManager::configureTrunks() {
    getApplication().log(0, "SwitchManager::configureTrunks\n");
    forEachSwitchWithHardware([](ManagedSwitch& managedSwitch) { managedSwitch.configureTrunkGroups(); });
}

void SwitchManager::configureMulticastFilters() {
    for (xmlNodePtr const node : XmlNodes(_xml.find("//forwardedMulticastGroup"))) {
        addMulticastGroup(node);
        MulticastGroup* const group = getMulticastGroup(node);
        if (group != nullptr) { // GCOVR_EXCL_BR_LINE: it has just been added
            addMulticastGroupPort(*group, node);
        } else { // GCOVR_EXCL_START: it has just been added; kept as the last word should that ever change
            getApplication().logError(
                "SwitchManager::configureMulticastFilters Unable to find MutlicastGroup %s to add port",
                node->content == nullptr ? "(null)" : reinterpret_cast<char const*>(node->content)); // NOLINT
        } // GCOVR_EXCL_STOP
    }
    forEachSwitchWithHardware(
        [](ManagedSwitch& managedSwitch) { managedSwitch.configureMulticastFilters(); });
}

MulticastGroup* SwitchManager::getMulticastGroup(_xmlNode* groupElement) const {
    XmlText const address = XmlText::content(groupElement);
    auto const found =
        _multicastGroupsByKey.find(MulticastGroup::Key{address.text(), vlanIdOf(groupElement)});
    return found == _multicastGroupsByKey.end() ? nullptr : *found;
}

void SwitchManager::addMulticastGroup(_xmlNode* groupElement) {
    XmlText const address = XmlText::content(groupElement);
    if (getMulticastGroup(groupElement) != nullptr) {
        getApplication().log(0, "SwitchManager::add_multicastGroup. Multicast Group already added. %s\n",
                             address.text());
        return;
    }
    auto group = std::make_unique<MulticastGroup>(getApplication(), address.text(), vlanIdOf(groupElement));
    addInOrder(group.get(), _multicastGroups, _multicastGroupsByKey);
    static_cast<void>(group.release());
    getApplication().log(0, "SwitchManager::addMulticastGroup. Adding multicastGroup %s\n", address.text());
}

void SwitchManager::addMulticastGroupPort(MulticastGroup& group, _xmlNode* groupElement) {
    xmlNode const* const parent = parentOf(groupElement);
    xmlNode const* const grandparent = grandparentOf(groupElement);
    bool const underVlan = isVlanElement(grandparent);
    int const switchId = underVlan ? numberIn(parent, "switchId") : numberIn(grandparent, "id");
    int const portId = numberIn(parent, underVlan ? "portId" : "id");
    ManagedSwitchPort* const port = findMember(switchId, portId, "addMulticastGroupPort", "multicast Group");
    if (port != nullptr) {
        group.addPort(*port, groupElement);
    }
}

void SwitchManager::configurePorts() {
    getApplication().log(0, "SwitchManager::configurePorts\n");
    forEachSwitchWithHardware([](ManagedSwitch& managedSwitch) { managedSwitch.configurePorts(); });
}
