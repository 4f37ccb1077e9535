#include "switchctl/BoardDocument.hpp"

#include <libxml/tree.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <sstream>

namespace switchctl {

namespace {

std::optional<std::string> taken(xmlChar* text) {
    auto const release = [](xmlChar* released) { xmlFree(released); };
    std::unique_ptr<xmlChar, decltype(release)> const owned(text, release);
    if (!owned) {
        return std::nullopt;
    }
    return reinterpret_cast<char const*>(owned.get()); // NOLINT: xmlChar is UTF-8 text
}

std::optional<std::string> attribute(xmlNodePtr node, char const* name) {
    return taken(xmlGetProp(node, reinterpret_cast<xmlChar const*>(name))); // NOLINT: as above
}

/// A decimal number, or -1.
int number(xmlNodePtr node, char const* name) {
    int value = -1;
    std::sscanf(attribute(node, name).value_or("").c_str(), "%d", &value); // NOLINT: the library's rule
    return value;
}

bool isNamed(xmlNodePtr node, char const* name) {
    return xmlStrcmp(node->name, reinterpret_cast<xmlChar const*>(name)) == 0; // NOLINT: as above
}

std::vector<xmlNodePtr> nodes(Xml& document, std::string const& query) {
    xmlNodeSetPtr const set = document.find(query);
    if (set == nullptr || set->nodeNr == 0) {
        return {};
    }
    return {set->nodeTab, set->nodeTab + set->nodeNr};
}

BoardDocument::Member vlanMember(xmlNodePtr port) {
    BoardDocument::Member member;
    member.switchId = number(port, "switchId");
    member.portId = number(port, "portId");
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
        entry.id =
            static_cast<std::uint16_t>(std::atoi(attribute(node, "id").value_or("").c_str())); // NOLINT
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
        vlan.id = ~0U;
        std::sscanf(attribute(node, "id").value_or("").c_str(), "%x", &vlan.id); // NOLINT: the library's rule
        vlan.tagBased = *type == "tagBasedVlan";
        vlans.emplace(vlan.id, vlan);
    }
    for (auto& [id, vlan] : vlans) {
        std::ostringstream query;
        query << "//vlan[@id=" << std::hex << id << "]/port";
        for (xmlNodePtr const port : nodes(document, query.str())) {
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
        int const vlanId = inVlan ? number(owner, "id") : 0;
        Member member;
        member.switchId = inVlan ? number(port, "switchId") : number(owner, "id");
        member.portId = number(port, inVlan ? "portId" : "id");
        std::string const address = taken(xmlNodeGetContent(node)).value_or("");
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

} // namespace switchctl
