#include "board/BoardReading.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>

#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace board {

bool BoardReading::Port::hasLinkSettings() const {
    return connectedTo == "smac" || connectedTo == "hmac" || connectedTo == "switchInterlink";
}

bool BoardReading::Port::comesUp() const {
    return hasLinkSettings() && portStatus == "forwarding";
}

BoardReading::Port const* BoardReading::Switch::findPort(unsigned int portId) const {
    auto const port = ports.find(portId);
    return portId == static_cast<unsigned int>(noNumber) || port == ports.end() ? nullptr : &port->second;
}

std::string BoardReading::Port::getName() const {
    auto const number = static_cast<int>(id);
    return number == noNumber ? "without a number" : idName(number, attribute(element, "id"));
}

bool BoardReading::Member::hasKnownTags() const {
    static std::set<std::string> const ingresses{"addTag", "validateTag", "addTagIfUntagged"};
    static std::set<std::string> const egresses{"stripTag", "validateTag"};
    return ingresses.count(attribute(element, "ingress").value_or("")) != 0 &&
           egresses.count(attribute(element, "egress").value_or("")) != 0;
}

std::string BoardReading::Trunk::getName() const {
    auto const written = attribute(element, "id");
    return written ? idName(id, written) : "without an id, line " + std::to_string(xmlGetLineNo(element));
}

std::string BoardReading::Switch::getName() const {
    return idName(static_cast<int>(id), attribute(element, "id"));
}

std::string BoardReading::Vlan::getName() const {
    return vlanName(id, attribute(element, "id"));
}

std::string BoardReading::Group::getVlanName() const {
    xmlNodePtr const port = members.front().element->parent;
    xmlNodePtr const owner = port == nullptr ? nullptr : port->parent;
    return vlanName(vlanId, isNamed(owner, "vlan") ? attribute(owner, "id") : std::nullopt);
}

BoardReading::BoardReading(Xml& document) : _document(document), _labels(document) {
    readSwitches();
    readVlans();
    readGroups();
}

std::vector<xmlNodePtr> BoardReading::find(std::string const& query) const {
    xmlNodeSetPtr const set = _document.find(query);
    if (set == nullptr || set->nodeNr == 0) {
        return {};
    }
    return {set->nodeTab, set->nodeTab + set->nodeNr};
}

BoardReading::Switch const* BoardReading::getSwitch(int id) const {
    auto const entry = _switches.find(static_cast<unsigned int>(id));
    return entry == _switches.end() ? nullptr : &entry->second;
}

std::optional<std::string> BoardReading::writtenVlanId(unsigned int id) const {
    auto const found = _vlans.find(id);
    return found == _vlans.end() ? std::nullopt : attribute(found->second.element, "id");
}

std::optional<BoardReading::Chip> BoardReading::chipOf(xmlNodePtr switchElement) {
    std::string const model = attribute(switchElement, "switchModel").value_or("");
    if (model == "88e6096") {
        return Chip::marvell88E6096;
    }
    return model == "vsc7390" ? std::optional<Chip>(Chip::vitesse7390) : std::nullopt;
}

unsigned int BoardReading::switchIdOf(xmlNodePtr switchElement) {
    return static_cast<std::uint16_t>(numberOr(switchElement, "id", 0));
}

unsigned int BoardReading::trunkPortIdOf(xmlNodePtr member) {
    return static_cast<unsigned int>(numberOr(member, "id", attribute(member, "id") ? 0 : noNumber));
}

unsigned int BoardReading::vlanIdOf(xmlNodePtr vlanElement) {
    return hexadecimalPrefix(attribute(vlanElement, "id").value_or(""))
        .value_or(std::numeric_limits<unsigned int>::max());
}

std::string BoardReading::memberQuery(unsigned int vlanId) {
    return fmt::format("//vlan[@id={:x}]/port", vlanId);
}

void BoardReading::readSwitches() {
    for (xmlNodePtr const element : find("//switches/switch")) {
        _wanted.push_back(
            {switchIdOf(element), attribute(element, "switchModel").value_or(""), attribute(element, "id")});
    }
    for (Chip const chip : {Chip::marvell88E6096, Chip::vitesse7390}) {
        for (xmlNodePtr const element : find("//switches/switch")) {
            unsigned int const id = switchIdOf(element);
            if (chipOf(element) != chip || _switches.count(id) != 0) {
                continue;
            }
            Switch entry;
            entry.element = element;
            entry.id = id;
            entry.chip = chip;
            entry.kind =
                &chips::ChipKinds::get(attribute(element, "switchModel").value_or(""), "board documents");
            entry.found = find("//switch[@id=" + std::to_string(id) + "]");
            if (!entry.found.empty()) {
                readPorts(entry);
                readTrunks(entry);
            }
            _switches.emplace(id, std::move(entry));
        }
    }
}

void BoardReading::readPorts(Switch& owner) const {
    std::string const own = "//switch[@id=" + std::to_string(owner.id) + "]/port";
    for (xmlNodePtr const element : find(owner.isVitesse() ? "//switch/port" : own)) {
        Port port;
        port.element = element;
        port.id = static_cast<unsigned int>(numberOr(element, "id", noNumber));
        port.connectedTo = attribute(element, "connectedTo").value_or("");
        port.portStatus = attribute(element, "portStatus").value_or("");
        if (!owner.ports.emplace(port.id, port).second) {
            owner.droppedPorts.push_back(element);
        }
        ++owner.entryCount;
    }
}

void BoardReading::readTrunks(Switch& owner) const {
    for (xmlNodePtr const element : find("//switch[@id=" + std::to_string(owner.id) + "]/trunk")) {
        Trunk trunk;
        trunk.element = element;
        trunk.id = numberOr(element, "id", attribute(element, "id") ? 0 : noNumber);
        trunk.members = find("//trunk[@id=" + std::to_string(trunk.id) + "]/port");
        owner.trunks.push_back(trunk);
        ++owner.entryCount;
    }
}

BoardReading::Outcome BoardReading::outcomeOf(Member const& candidate,
                                              std::vector<Member> const& members) const {
    Switch const* const owner = getSwitch(candidate.switchId);
    if (owner == nullptr) {
        return Outcome::unknownSwitch;
    }
    if (owner->findPort(static_cast<unsigned int>(candidate.portId)) == nullptr) {
        return Outcome::unknownPort;
    }
    for (Member const& member : members) {
        if (member.outcome == Outcome::added && member.portId == candidate.portId) {
            return member.switchId == candidate.switchId ? Outcome::twice : Outcome::numberTaken;
        }
    }
    return Outcome::added;
}

void BoardReading::readVlans() {
    for (xmlNodePtr const element : find("//vlan")) {
        std::optional<std::string> const type = attribute(element, "typeOfVlan");
        if (!type) {
            continue;
        }
        Vlan vlan;
        vlan.element = element;
        vlan.id = vlanIdOf(element);
        vlan.tagBased = *type == "tagBasedVlan";
        _vlans.emplace(vlan.id, vlan);
    }
    for (auto& [id, vlan] : _vlans) {
        for (xmlNodePtr const element : find(memberQuery(id))) {
            Member member;
            member.element = element;
            member.switchId = numberOr(element, "switchId", noNumber);
            member.portId = numberOr(element, "portId", noNumber);
            member.outcome = outcomeOf(member, vlan.members);
            vlan.members.push_back(member);
        }
    }
}

void BoardReading::readGroups() {
    for (xmlNodePtr const element : find("//forwardedMulticastGroup")) {
        xmlNodePtr const port = element->parent;
        xmlNodePtr const owner = port == nullptr ? nullptr : port->parent;
        bool const inVlan = isNamed(owner, "vlan");
        unsigned int const vlanId =
            inVlan ? static_cast<std::uint16_t>(numberOr(owner, "id", 0)) : std::uint16_t{0};
        Group& group = groupFor(content(element), vlanId);
        Member member;
        member.element = element;
        member.switchId = inVlan ? numberOr(port, "switchId", noNumber) : numberOr(owner, "id", noNumber);
        member.portId = numberOr(port, inVlan ? "portId" : "id", noNumber);
        member.outcome = outcomeOf(member, group.members);
        group.members.push_back(member);
    }
}

BoardReading::Group& BoardReading::groupFor(std::string const& address, unsigned int vlanId) {
    auto const found = std::find_if(_groups.begin(), _groups.end(), [&](Group const& group) {
        return group.address == address && group.vlanId == vlanId;
    });
    if (found != _groups.end()) {
        return *found;
    }
    Group group;
    group.address = address;
    group.vlanId = vlanId;
    _groups.push_back(group);
    return _groups.back();
}

std::map<unsigned int, BoardReading::Member const*> BoardReading::membershipsOf(unsigned int switchId,
                                                                                unsigned int portId) const {
    std::map<unsigned int, Member const*> memberships;
    for (auto const& [id, vlan] : _vlans) {
        for (Member const& member : vlan.members) {
            if (member.outcome == Outcome::added && member.switchId == static_cast<int>(switchId) &&
                member.portId == static_cast<int>(portId)) {
                memberships.emplace(id, &member);
            }
        }
    }
    return memberships;
}

std::vector<BoardReading::Member const*> BoardReading::addedMembers(std::vector<Member> const& members,
                                                                    unsigned int switchId) {
    std::vector<Member const*> found;
    for (Member const& member : members) {
        if (member.outcome == Outcome::added && member.switchId == static_cast<int>(switchId)) {
            found.push_back(&member);
        }
    }
    return found;
}

} // namespace board
