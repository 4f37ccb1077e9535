#include "benchmarks/required/BoardPlan.hpp"

#include <libxml/tree.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

namespace required {

namespace {

constexpr unsigned ageNotConfigured = 65535;

std::vector<xmlNodePtr> elements(Xml& document, std::string const& query) {
    xmlNodeSetPtr const found = document.find(query);
    return found == nullptr ? std::vector<xmlNodePtr>()
                            : std::vector<xmlNodePtr>(found->nodeTab, found->nodeTab + found->nodeNr);
}

std::string textOf(xmlChar* characters) {
    std::unique_ptr<xmlChar, void (*)(xmlChar*)> const owned(characters,
                                                             [](xmlChar* text) { xmlFree(text); });
    return owned == nullptr ? std::string() : std::string(reinterpret_cast<char const*>(owned.get()));
}

std::string attribute(xmlNodePtr element, char const* name) {
    return textOf(xmlGetProp(element, reinterpret_cast<xmlChar const*>(name)));
}

unsigned number(xmlNodePtr element, char const* name, int base = 10) {
    return static_cast<unsigned>(std::strtoul(attribute(element, name).c_str(), nullptr, base));
}

bool isNamed(xmlNodePtr element, char const* name) {
    return element != nullptr && xmlStrEqual(element->name, reinterpret_cast<xmlChar const*>(name)) != 0;
}

template <typename Value> Value word(std::string const& text, std::map<std::string, Value> const& words) {
    return words.at(text);
}

PortPlan portOf(xmlNodePtr element) {
    static std::map<std::string, PortKind> const kinds = {
        {"smac", PortKind::smac}, {"hmac", PortKind::hmac}, {"switchInterlink", PortKind::interlink}};
    static std::map<std::string, PortState> const states = {{"disabled", PortState::disabled},
                                                            {"listening", PortState::listening},
                                                            {"learning", PortState::learning},
                                                            {"forwarding", PortState::forwarding}};
    auto const kind = kinds.find(attribute(element, "connectedTo"));
    return {number(element, "id"),
            kind == kinds.end() ? PortKind::other : kind->second,
            word(attribute(element, "portStatus"), states),
            {},
            {},
            {}};
}

SwitchPlan switchOf(Xml& document, xmlNodePtr element) {
    std::string const id = attribute(element, "id");
    std::string const own = "//switch[@id=" + id + "]";
    SwitchPlan plan{number(element, "id"), attribute(element, "switchModel") == "88e6096", 0, {}, {}, {}};
    if (unsigned const age = number(element, "atuAgeTime");
        !attribute(element, "atuAgeTime").empty() && age != ageNotConfigured) {
        plan.ageSeconds = age;
    }
    // A VSC7390 takes the ports of the whole document, and of each number the first.
    std::map<unsigned, PortPlan> ports;
    for (xmlNodePtr const port : elements(document, plan.isMarvell ? own + "/port" : "//switch/port")) {
        ports.emplace(number(port, "id"), portOf(port));
        ++plan.countedPorts;
    }
    for (auto& entry : ports) {
        plan.ports.push_back(std::move(entry.second));
    }
    for (xmlNodePtr const trunk : elements(document, own + "/trunk")) {
        std::set<unsigned> members;
        for (xmlNodePtr const member :
             elements(document, "//trunk[@id=" + attribute(trunk, "id") + "]/port")) {
            members.insert(number(member, "id"));
        }
        plan.trunks.emplace_back(members.begin(), members.end());
        ++plan.countedPorts;
    }
    return plan;
}

PortPlan* findPort(BoardPlan& board, unsigned switchId, unsigned portId) {
    for (SwitchPlan& chip : board.switches) {
        for (PortPlan& port : chip.ports) {
            if (chip.id == switchId && port.id == portId) {
                return &port;
            }
        }
    }
    return nullptr;
}

struct Member {
    unsigned switchId;
    PortPlan* port;
    xmlNodePtr element;
};

/// A VLAN's members by port number, of which each is taken once, on whichever switch.
std::map<unsigned, Member> membersOf(BoardPlan& board, Xml& document, unsigned vlanId) {
    constexpr int longestQuery = 64;
    char query[longestQuery];
    std::snprintf(query, sizeof query, "//vlan[@id=%x]/port", vlanId);
    std::map<unsigned, Member> members;
    for (xmlNodePtr const element : elements(document, query)) {
        unsigned const switchId = number(element, "switchId");
        if (PortPlan* const port = findPort(board, switchId, number(element, "portId"))) {
            members.emplace(port->id, Member{switchId, port, element});
        }
    }
    return members;
}

void addTagBasedVlan(std::map<unsigned, Member> const& members, unsigned vlanId) {
    static std::map<std::string, Ingress> const ingress = {{"addTag", Ingress::addTag},
                                                           {"validateTag", Ingress::validateTag},
                                                           {"addTagIfUntagged", Ingress::addTagIfUntagged}};
    static std::map<std::string, Egress> const egress = {{"stripTag", Egress::stripTag},
                                                         {"validateTag", Egress::validateTag}};
    for (auto const& entry : members) {
        xmlNodePtr const element = entry.second.element;
        entry.second.port->vlans.push_back({vlanId, word(attribute(element, "ingress"), ingress),
                                            word(attribute(element, "egress"), egress)});
    }
}

void addPortBasedVlan(BoardPlan& board, std::map<unsigned, Member> const& members) {
    for (auto const& from : members) {
        for (auto const& to : members) {
            // A route leads to the port of that number on the own switch.
            if (to.first != from.first && findPort(board, from.second.switchId, to.first) != nullptr) {
                from.second.port->routes.push_back(to.first);
            }
        }
    }
}

void addVlans(BoardPlan& board, Xml& document) {
    constexpr int hexadecimal = 16;
    std::map<unsigned, bool> isTagBased;
    for (xmlNodePtr const vlan : elements(document, "//vlan")) {
        isTagBased.emplace(number(vlan, "id", hexadecimal), attribute(vlan, "typeOfVlan") == "tagBasedVlan");
    }
    for (auto const& vlan : isTagBased) {
        std::map<unsigned, Member> const members = membersOf(board, document, vlan.first);
        if (vlan.second) {
            addTagBasedVlan(members, vlan.first);
        } else {
            addPortBasedVlan(board, members);
        }
    }
}

void addGroups(BoardPlan& board, Xml& document) {
    std::map<std::pair<std::string, unsigned>, std::set<unsigned>> groups;
    for (xmlNodePtr const group : elements(document, "//forwardedMulticastGroup")) {
        xmlNodePtr const parent = group->parent;
        xmlNodePtr const grandparent = parent->parent;
        bool const underVlan = isNamed(grandparent, "vlan");
        std::string const address = textOf(xmlNodeGetContent(group));
        unsigned const vid = underVlan ? number(grandparent, "id") : 0;
        unsigned const switchId = underVlan ? number(parent, "switchId") : number(grandparent, "id");
        PortPlan* const port = findPort(board, switchId, number(parent, underVlan ? "portId" : "id"));
        if (port != nullptr && groups[{address, vid}].insert(port->id).second) {
            port->groups.push_back({address, vid});
        }
    }
}

} // namespace

BoardPlan BoardPlan::of(Xml& document) {
    BoardPlan board;
    for (xmlNodePtr const element : elements(document, "//switches/switch")) {
        board.switches.push_back(switchOf(document, element));
        board.probes.push_back({board.switches.back().id, board.switches.back().isMarvell});
    }
    std::sort(board.switches.begin(), board.switches.end(),
              [](SwitchPlan const& first, SwitchPlan const& second) { return first.id < second.id; });
    addVlans(board, document);
    addGroups(board, document);
    return board;
}

} // namespace required
