#include "board/intent/IntendedBoard.hpp"

#include <arpa/inet.h>
#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace board {

namespace {

constexpr unsigned highestVid = 4094;

std::vector<xmlNodePtr> elementsOf(Xml& document, char const* query) {
    xmlNodeSetPtr const set = document.find(query);
    if (set == nullptr || set->nodeNr == 0) {
        return {};
    }
    return {set->nodeTab, set->nodeTab + set->nodeNr};
}

int lineOf(xmlNodePtr element) {
    return static_cast<int>(xmlGetLineNo(element));
}

/// A number of a port that a switch can have.
std::optional<unsigned> portNumber(xmlNodePtr element, char const* name) {
    int const number = numberOr(element, name, -1);
    bool const fits = number >= 0 && number < static_cast<int>(IntendedBoard::Switch().ports.size());
    return fits ? std::optional<unsigned>(number) : std::nullopt;
}

std::optional<IntendedBoard::Ingress> ingressOf(xmlNodePtr member) {
    std::string const word = attribute(member, "ingress").value_or("");
    if (word == "addTag") {
        return IntendedBoard::Ingress::addTag;
    }
    if (word == "validateTag") {
        return IntendedBoard::Ingress::validateTag;
    }
    return word == "addTagIfUntagged" ? std::optional(IntendedBoard::Ingress::addTagIfUntagged)
                                      : std::nullopt;
}

std::optional<bool> stripsTag(xmlNodePtr member) {
    std::string const word = attribute(member, "egress").value_or("");
    if (word == "stripTag") {
        return true;
    }
    return word == "validateTag" ? std::optional(false) : std::nullopt;
}

} // namespace

IntendedBoard::IntendedBoard(Xml& document) : _labels(document) {
    for (xmlNodePtr const element : elementsOf(document, "//switches/switch")) {
        readSwitch(element);
    }
    for (xmlNodePtr const element : elementsOf(document, "//vlan")) {
        auto const type = attribute(element, "typeOfVlan");
        if (type == "tagBasedVlan") {
            readTagVlan(element);
        } else if (type) {
            readPortVlan(element);
        }
    }
    for (xmlNodePtr const element : elementsOf(document, "//forwardedMulticastGroup")) {
        readGroup(element);
    }
    findContradictions();
}

void IntendedBoard::readSwitch(xmlNodePtr element) {
    static std::set<std::string> const models{"88e6096", "vsc7390"};
    Switch entry;
    entry.id = static_cast<unsigned>(numberOr(element, "id", 0));
    entry.line = lineOf(element);
    entry.model = attribute(element, "switchModel").value_or("");
    entry.filtersGroups = entry.model == "vsc7390";
    if (models.count(entry.model) == 0 || _switches.count(entry.id) != 0) {
        return;
    }
    for (xmlNodePtr const port : children(element, "port")) {
        auto const number = portNumber(port, "id");
        if (number && !entry.ports[*number].isListed) {
            Port& listed = entry.ports[*number];
            listed.isListed = true;
            listed.line = lineOf(port);
            listed.status = attribute(port, "portStatus").value_or("");
            listed.connectsTo = attribute(port, "connectsTo").value_or("");
            entry.open |= listed.status == "forwarding" ? PortSet{1} << *number : 0;
        }
    }
    for (xmlNodePtr const trunk : children(element, "trunk")) {
        readTrunk(entry, trunk);
    }
    _switches.emplace(entry.id, std::move(entry));
}

void IntendedBoard::readTrunk(Switch& owner, xmlNodePtr element) {
    PortSet members = 0;
    for (xmlNodePtr const port : children(element, "port")) {
        if (auto const number = portNumber(port, "id")) {
            members |= PortSet{1} << *number;
        }
    }
    if ((members & (members - 1)) == 0) {
        return;
    }
    owner.trunks.push_back(members);
    for (unsigned port = 0; port < owner.ports.size(); ++port) {
        PortSet const self = PortSet{1} << port;
        if ((members & self) != 0) {
            owner.ports[port].trunk |= members & ~self;
        }
    }
}

IntendedBoard::Switch* IntendedBoard::findSwitch(xmlNodePtr element, char const* attributeName) {
    auto const entry = _switches.find(static_cast<unsigned>(numberOr(element, attributeName, -1)));
    return entry == _switches.end() ? nullptr : &entry->second;
}

void IntendedBoard::readTagVlan(xmlNodePtr element) {
    std::string const written = attribute(element, "id").value_or("");
    unsigned const id = hexadecimalPrefix(written).value_or(0);
    if (id == 0 || id > highestVid) {
        _contradictions.push_back(
            {lineOf(element), fmt::format("No tag can carry the VLAN id \"{}\".", written)});
        return;
    }
    _vlans.emplace(id, Vlan{id, written, lineOf(element)});
    for (xmlNodePtr const member : children(element, "port")) {
        readMember(id, member);
    }
}

void IntendedBoard::readMember(unsigned vlan, xmlNodePtr element) {
    Switch* const owner = findSwitch(element, "switchId");
    auto const port = portNumber(element, "portId");
    auto const ingress = ingressOf(element);
    auto const strips = stripsTag(element);
    if (owner == nullptr || !port || !ingress || !strips) {
        return;
    }
    Membership const membership{*ingress, *strips, lineOf(element)};
    if (owner->ports[*port].memberships.emplace(vlan, membership).second) {
        Members& members = owner->vlans[vlan];
        members.all |= PortSet{1} << *port;
        members.stripping |= *strips ? PortSet{1} << *port : 0;
    }
}

void IntendedBoard::readPortVlan(xmlNodePtr element) {
    std::map<Switch*, PortSet> members;
    for (xmlNodePtr const member : children(element, "port")) {
        Switch* const owner = findSwitch(member, "switchId");
        auto const port = portNumber(member, "portId");
        if (owner != nullptr && port) {
            members[owner] |= PortSet{1} << *port;
        }
    }
    for (auto const& [owner, ports] : members) {
        owner->inPortVlans |= ports;
        for (unsigned port = 0; port < owner->ports.size(); ++port) {
            PortSet const self = PortSet{1} << port;
            if ((ports & self) != 0) {
                owner->ports[port].partners |= ports & ~self;
            }
        }
    }
}

void IntendedBoard::readGroup(xmlNodePtr element) {
    xmlNodePtr const member = element->parent;
    xmlNodePtr const place = member == nullptr ? nullptr : member->parent;
    bool const inVlan = isNamed(place, "vlan");
    std::string const address = content(element);
    auto const hardwareAddress = hardwareAddressOf(address);
    Switch* const owner = inVlan ? findSwitch(member, "switchId") : findSwitch(place, "id");
    auto const port = portNumber(member, inVlan ? "portId" : "id");
    std::optional<unsigned> const vlan =
        inVlan ? hexadecimalPrefix(attribute(place, "id").value_or("")) : std::nullopt;
    if (!hardwareAddress || owner == nullptr || !port || (inVlan && _vlans.count(vlan.value_or(0)) == 0)) {
        return;
    }
    // Frames do not tell apart groups of the same hardware address.
    auto const known = std::find_if(_groups.begin(), _groups.end(), [&](Group const& group) {
        return group.hardwareAddress == *hardwareAddress && group.vlan == vlan;
    });
    Group& group =
        known != _groups.end() ? *known : _groups.emplace_back(Group{address, *hardwareAddress, vlan, {}});
    group.members[owner->id] |= PortSet{1} << *port;
}

std::optional<std::uint64_t> IntendedBoard::hardwareAddressOf(std::string const& group) {
    constexpr std::uint64_t groupsOfIpv4 = 0x01005E000000;
    constexpr std::uint32_t mappedBits = 0x7FFFFF;
    in_addr address{};
    if (inet_pton(AF_INET, group.c_str(), &address) != 1 || !IN_MULTICAST(ntohl(address.s_addr))) {
        return std::nullopt;
    }
    return groupsOfIpv4 | (ntohl(address.s_addr) & mappedBits);
}

void IntendedBoard::findContradictions() {
    for (auto const& [id, owner] : _switches) {
        for (unsigned port = 0; port < owner.ports.size(); ++port) {
            findContradictions(owner, port, Ingress::addTag, "addTag");
            findContradictions(owner, port, Ingress::addTagIfUntagged, "addTagIfUntagged");
        }
    }
}

void IntendedBoard::findContradictions(Switch const& owner, unsigned port, Ingress ingress,
                                       char const* word) {
    std::vector<std::string> vlans;
    int line = 0;
    for (auto const& [vlan, membership] : owner.ports[port].memberships) {
        if (membership.ingress == ingress) {
            vlans.push_back(vlanName(vlan, _vlans.at(vlan).written));
            line = std::max(line, membership.line);
        }
    }
    if (vlans.size() > 1) {
        std::string const address = portAddress(static_cast<int>(owner.id), static_cast<int>(port));
        _contradictions.push_back({line, fmt::format("{} is {} in {}, of which a frame can get one tag; "
                                                     "counted here: {}.",
                                                     address, word, listed(vlans), vlans.front())});
    }
}

} // namespace board
