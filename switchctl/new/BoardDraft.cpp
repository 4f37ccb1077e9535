#include "switchctl/new/BoardDraft.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

#include "board/Wording.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/NumberText.hpp"

namespace switchctl::draft {

namespace {

/// From here on, the hexadecimal and the decimal reading of an id are two numbers.
constexpr unsigned firstOfTwoReadings = 10;
/// What chips begin with.
constexpr unsigned defaultVlan = 1;
constexpr unsigned highestVlanId = 4094;
constexpr unsigned mdioAddresses = 32;

[[noreturn]] void refuse(std::string const& answer, std::string const& reason) {
    throw BoardDraft::Refused("\"" + answer + "\": " + reason);
}

std::pair<std::string, std::string> split(std::string const& text, char const* form) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) {
        refuse(text, std::string("not of the form ") + form);
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

unsigned decimal(std::string const& text, std::string const& answer) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), [](char c) { return '0' <= c && c <= '9'; }) ||
        !chips::NumberText::parse(text)) {
        refuse(answer, "\"" + text + "\" is no decimal number");
    }
    return *chips::NumberText::parse(text);
}

std::string nameOf(BoardDraft::Place const& port) {
    return std::to_string(port.first) + "." + std::to_string(port.second);
}

} // namespace

void BoardDraft::addChip(std::string const& text) {
    auto const [number, model] = split(text, "ID=MODEL, for example 0=88e6096");
    unsigned const id = decimal(number, text);
    chips::ChipKind const* const kind = chips::ChipKinds::find(model);
    if (kind == nullptr) {
        std::vector<std::string> models;
        for (chips::ChipKind const* const known : chips::ChipKinds::getAll()) {
            models.push_back(known->getFacts().model);
        }
        refuse(text, "no such chip is known; there are " + board::listed(models));
    }
    if (_chips.count(id) != 0) {
        refuse(text, "there is a switch " + number + " already");
    }
    if (id >= mdioAddresses) {
        refuse(text, "ids are addresses on the MDIO bus, 0 to 31");
    }
    auto const needsAll = [](chips::ChipKind const* chip) {
        return chip->getFacts().settings.speedRegister.has_value();
    };
    if (!_chips.empty() && (needsAll(kind) || needsAll(_chips.begin()->second))) {
        refuse(text, "a VSC7390 takes the ports of all switches of its document for its own; give it one by "
                     "itself");
    }
    _chips.emplace(id, kind);
}

BoardDraft::Place BoardDraft::parsePort(std::string const& text) const {
    auto const port = chips::PortAddress::fromText(text);
    if (!port) {
        refuse(text, "not of the form SWITCH.PORT");
    }
    auto const chip = _chips.find(port->switchId);
    if (chip == _chips.end() || port->portId >= chip->second->getFacts().ports) {
        refuse(text, "there is no such port");
    }
    return {port->switchId, port->portId};
}

chips::ChipKind::Facts const& BoardDraft::factsOf(Place const& port) const {
    return _chips.at(port.first)->getFacts();
}

bool BoardDraft::isVitesse(Place const& port) const {
    return factsOf(port).settings.speedRegister.has_value();
}

void BoardDraft::setCpu(std::string const& text) {
    Place const port = parsePort(text);
    if (_links.count(port) != 0) {
        refuse(text, "is connected to \"" + _links.at(port) + "\" already");
    }
    _cpu = port;
}

void BoardDraft::addLink(std::string const& text) {
    auto const [place, type] = split(text, "SWITCH.PORT=KIND, for example 0.10=switchInterlink");
    Place const port = parsePort(place);
    std::vector<std::string> types = board::knownPortTypes();
    types.erase(std::remove(types.begin(), types.end(), "cpu"), types.end());
    if (std::find(types.begin(), types.end(), type) == types.end()) {
        refuse(text, "it may be connected to " + board::listed(types));
    }
    if (port == _cpu || !_links.emplace(port, type).second) {
        refuse(text, "what it is connected to was said already");
    }
}

void BoardDraft::addVlan(std::string const& text) {
    auto const [number, list] = split(text, "VLAN=PORT,PORT..., for example 2=0.1,0.2,0.8t");
    unsigned const id = decimal(number, text);
    if (id == 0 || id > highestVlanId) {
        refuse(text, "VLANs are 1 to 4094");
    }
    if (id == defaultVlan) {
        refuse(text, "VLAN 1 cannot be had: it gets the frames without a tag of each port that is to have "
                     "tagged ones only");
    }
    if (id >= firstOfTwoReadings) {
        refuse(text,
               fmt::format("VLAN {} cannot be had: the library reads id=\"{}\" as hexadecimal, which is {}, "
                           "and its members as decimal; VLANs 2 to 9 can be had",
                           id, id, std::stoul(std::to_string(id), nullptr, 16)));
    }
    if (_vlans.count(id) != 0) {
        refuse(text, "VLAN " + number + " was said already");
    }
    Members members;
    std::istringstream words(list);
    for (std::string word; std::getline(words, word, ',');) {
        bool const isTagged = !word.empty() && word.back() == 't';
        Place const port = parsePort(isTagged ? word.substr(0, word.size() - 1) : word);
        requireMember(port, isTagged, members);
        members.emplace(port, isTagged);
    }
    _vlans.emplace(id, members);
}

void BoardDraft::requireMember(Place const& port, bool isTagged, Members const& others) const {
    std::string const name = nameOf(port);
    for (auto const& entry : others) {
        if (entry.first.second == port.second) {
            refuse(name, entry.first == port ? "is in the list twice"
                                             : "the library tells the members of a VLAN apart by port number "
                                               "alone, and " +
                                                   nameOf(entry.first) + " is one");
        }
    }
    if (!isTagged && isUntaggedElsewhere(port)) {
        refuse(name, "frames without a tag belong to one VLAN only, and it is in another one already");
    }
    if (!isVitesse(port)) {
        return;
    }
    if (isTagged) {
        refuse(name,
               "a VSC7390 likely lets tagged frames of other VLANs through to all ports; say it without "
               "t");
    }
    auto const link = _links.find(port);
    bool const isSetUp = link != _links.end() && (link->second == "smac" || link->second == "hmac" ||
                                                  link->second == "switchInterlink");
    if (!isSetUp) {
        refuse(name, "the library sets up ports of a VSC7390 that are connected to an smac, an hmac or a "
                     "switchInterlink only; say so with --link first");
    }
}

bool BoardDraft::isUntaggedElsewhere(Place const& port) const {
    return std::any_of(_vlans.begin(), _vlans.end(), [&](auto const& vlan) {
        auto const member = vlan.second.find(port);
        return member != vlan.second.end() && !member->second;
    });
}

std::set<unsigned> BoardDraft::vlansOf(Place const& port) const {
    std::set<unsigned> ids;
    for (auto const& [id, members] : _vlans) {
        if (members.count(port) != 0) {
            ids.insert(id);
        }
    }
    return ids;
}

void BoardDraft::requireComplete() const {
    if (_chips.empty()) {
        throw Refused("a board has a chip at least");
    }
    if (_chips.count(_cpu.first) == 0) {
        throw Refused("the processor's port is missing");
    }
    if (!isVitesse(_cpu) && vlansOf(_cpu).empty()) {
        throw Refused("the processor's port " + nameOf(_cpu) +
                      " is in no VLAN, so that an 88E6096 drops all of its frames");
    }
}

std::string BoardDraft::getDescription(Place const& port) const {
    if (port == _cpu) {
        return "the processor";
    }
    return vlansOf(port).empty() ? "not used" : "";
}

std::string BoardDraft::getSwitchText(unsigned id, chips::ChipKind const& kind) const {
    std::string text =
        fmt::format("    <!-- All ports of the {} are listed: one that is not would stay open. -->\n"
                    "    <switch id=\"{}\" switchModel=\"{}\">\n",
                    kind.getFacts().name, id, kind.getFacts().model);
    for (unsigned number = 0; number < kind.getFacts().ports; ++number) {
        Place const port{id, number};
        auto const link = _links.find(port);
        std::string const type = port == _cpu ? "cpu" : link == _links.end() ? "external" : link->second;
        bool const isUsed = port == _cpu || !vlansOf(port).empty();
        std::string const description = getDescription(port);
        text += fmt::format("      <port id=\"{}\" connectedTo=\"{}\" portStatus=\"{}\"/>{}\n", number, type,
                            isUsed ? "forwarding" : "disabled",
                            description.empty() ? "" : " <!-- " + description + " -->");
    }
    return text + "    </switch>\n";
}

std::string BoardDraft::getVlanText(unsigned id, Members const& members, std::string const& comment) const {
    std::string text =
        fmt::format("\n  <!-- {} -->\n  <vlan id=\"{}\" typeOfVlan=\"tagBasedVlan\">\n", comment, id);
    for (auto const& [port, isTagged] : members) {
        // Where tagged frames come in, too, these keep their VLAN.
        char const* const untagged = vlansOf(port).size() > 1 ? "addTagIfUntagged" : "addTag";
        text += fmt::format("    <port switchId=\"{}\" portId=\"{}\" ingress=\"{}\" egress=\"{}\"/>\n",
                            port.first, port.second, isTagged ? "validateTag" : untagged,
                            isTagged ? "validateTag" : "stripTag");
    }
    return text + "  </vlan>\n";
}

std::string BoardDraft::getText() const {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!--\n"
        "  Ports that are not used are in no VLAN: portStatus \"disabled\" alone closes no socket.\n"
        "  VLAN ids are below 10, which are the same in hexadecimal and in decimal.\n"
        "-->\n"
        "<board>\n  <switches>\n";
    for (auto const& [id, kind] : _chips) {
        text += getSwitchText(id, *kind);
    }
    text += "  </switches>\n";
    for (auto const& [id, members] : _vlans) {
        text += getVlanText(id, members, "VLAN " + std::to_string(id));
    }
    if (isVitesse(_cpu)) {
        text += getVlanText(defaultVlan, {{_cpu, false}},
                            "The processor's port by itself: the host may start it");
    }
    return text + "</board>\n";
}

} // namespace switchctl::draft
