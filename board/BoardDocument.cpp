#include "board/BoardDocument.hpp"

#include <libxml/tree.h>

#include <cstdint>
#include <map>
#include <optional>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"

namespace board {

namespace {

constexpr int absent = -1;

std::vector<xmlNodePtr> nodes(Xml& document, std::string const& query) {
    xmlNodeSetPtr const set = document.find(query);
    if (set == nullptr || set->nodeNr == 0) {
        return {};
    }
    return {set->nodeTab, set->nodeTab + set->nodeNr};
}

BoardDocument::Member vlanMember(xmlNodePtr port) {
    BoardDocument::Member member;
    member.switchId = numberOr(port, "switchId", absent);
    member.portId = numberOr(port, "portId", absent);
    member.ingress = attribute(port, "ingress").value_or("");
    member.egress = attribute(port, "egress").value_or("");
    return member;
}

} // namespace

BoardDocument::BoardDocument(Xml& document) {
    readSwitches(document);
    readVlans(document);
    readMulticastGroups(document);
}

std::vector<BoardDocument::Switch> const& BoardDocument::getSwitches() const {
    return _switches;
}

std::vector<BoardDocument::Vlan> const& BoardDocument::getVlans() const {
    return _vlans;
}

std::vector<BoardDocument::MulticastGroup> const& BoardDocument::getMulticastGroups() const {
    return _multicastGroups;
}

void BoardDocument::readSwitches(Xml& document) {
    for (xmlNodePtr const node : nodes(document, "//switches/switch")) {
        Switch entry;
        entry.id = BoardReading::switchIdOf(node);
        entry.model = attribute(node, "switchModel").value_or("");
        _switches.push_back(entry);
    }
}

void BoardDocument::readVlans(Xml& document) {
    std::map<unsigned int, Vlan> vlans;
    for (xmlNodePtr const node : nodes(document, "//vlan")) {
        std::optional<std::string> const type = attribute(node, "typeOfVlan");
        if (!type) {
            continue;
        }
        Vlan vlan;
        vlan.id = BoardReading::vlanIdOf(node);
        vlan.tagBased = *type == "tagBasedVlan";
        vlans.emplace(vlan.id, vlan);
    }
    for (auto& [id, vlan] : vlans) {
        for (xmlNodePtr const port : nodes(document, BoardReading::memberQuery(id))) {
            vlan.members.push_back(vlanMember(port));
        }
        _vlans.push_back(vlan);
    }
}

void BoardDocument::readMulticastGroups(Xml& document) {
    for (xmlNodePtr const node : nodes(document, "//forwardedMulticastGroup")) {
        xmlNodePtr const port = node->parent;
        xmlNodePtr const owner = port->parent;
        if (owner == nullptr) {
            continue;
        }
        bool const inVlan = isNamed(owner, "vlan");
        int const vlanId = inVlan ? numberOr(owner, "id", 0) : 0;
        Member member;
        member.switchId = inVlan ? numberOr(port, "switchId", absent) : numberOr(owner, "id", absent);
        member.portId = numberOr(port, inVlan ? "portId" : "id", absent);
        std::string const address = content(node);
        groupFor(address, static_cast<std::uint16_t>(vlanId)).members.push_back(member);
    }
}

BoardDocument::MulticastGroup& BoardDocument::groupFor(std::string const& address, unsigned int vlanId) {
    for (MulticastGroup& group : _multicastGroups) {
        if (group.address == address && group.vlanId == vlanId) {
            return group;
        }
    }
    MulticastGroup group;
    group.address = address;
    group.vlanId = vlanId;
    _multicastGroups.push_back(group);
    return _multicastGroups.back();
}

} // namespace board
