#include "switchctl/check/CheckTable.hpp"

#include <algorithm>
#include <map>
#include <set>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

namespace {

using board::BoardReading;
using Port = BoardReading::Port;
using Switch = BoardReading::Switch;
using Trunk = BoardReading::Trunk;

template <typename Use> void forEachTrunk(BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (Trunk const& trunk : owner.trunks) {
            use(owner, trunk);
        }
    }
}

/// Of the chips that have trunks.
template <typename Use> void forEachTrunkInChip(BoardReading const& board, Use use) {
    forEachTrunk(board, [&](Switch const& owner, Trunk const& trunk) {
        if (owner.isVitesse()) {
            use(owner, trunk);
        }
    });
}

std::string ownIds() {
    return "Give every trunk of the document an id of its own, in decimal digits.";
}

/// The trunk's ports by number, as far as the switch has them.
std::map<unsigned int, Port const*> portsOf(Switch const& owner, Trunk const& trunk) {
    std::map<unsigned int, Port const*> ports;
    for (xmlNodePtr const member : trunk.members) {
        if (Port const* const port = owner.findPort(BoardReading::trunkPortIdOf(member))) {
            ports.emplace(port->id, port);
        }
    }
    return ports;
}

void idNotANumber(BoardReading const& board, Report const& report) {
    forEachTrunk(board, [&](Switch const&, Trunk const& trunk) {
        std::optional<std::string> const text = board::attribute(trunk.element, "id");
        if (!text) {
            report(trunk.element,
                   "The library reports that the trunk id is not a valid integer value and uses -1.",
                   ownIds());
        } else if (!board::decimalPrefix(*text)) {
            report(trunk.element, "The library reads the trunk id \"" + *text + "\" as 0.", ownIds());
        }
    });
}

void membersLost(BoardReading const& board, Report const& report) {
    forEachTrunk(board, [&](Switch const&, Trunk const& trunk) {
        std::vector<xmlNodePtr> const own = board::children(trunk.element, "port");
        if (!own.empty() && std::count(trunk.members.begin(), trunk.members.end(), own.front()) == 0) {
            report(trunk.element,
                   "The library looks for the trunk's ports with //trunk[@id=" + std::to_string(trunk.id) +
                       "]/port, which does not find those of id " +
                       board::quotedAttribute(trunk.element, "id") + ".",
                   ownIds());
        }
    });
}

void idShared(BoardReading const& board, Report const& report) {
    forEachTrunk(board, [&](Switch const& owner, Trunk const& trunk) {
        std::set<xmlNodePtr> reported;
        for (xmlNodePtr const member : trunk.members) {
            xmlNodePtr const other = member->parent;
            if (other == trunk.element || !reported.insert(other).second) {
                continue;
            }
            report(
                trunk.element,
                "The library gives a trunk the ports of every trunk element of its id: this one of switch " +
                    std::to_string(owner.id) + " also gets the port numbers listed at line " +
                    std::to_string(xmlGetLineNo(other)) + ".",
                ownIds());
        }
    });
}

void outsideSwitch(BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//trunk[not(parent::switch)]")) {
        report(element,
               "No switch finds a trunk here, so that it is never made; its ports still go to trunks of the "
               "same id.",
               "Move it into its <switch>.");
    }
}

void portUnknown(BoardReading const& board, Report const& report) {
    forEachTrunk(board, [&](Switch const& owner, Trunk const& trunk) {
        for (xmlNodePtr const member : trunk.members) {
            auto const number = static_cast<int>(BoardReading::trunkPortIdOf(member));
            if (owner.findPort(static_cast<unsigned int>(number)) == nullptr) {
                report(
                    member,
                    (number == BoardReading::noNumber
                         ? "The trunk's port has no number (id is " + board::quotedAttribute(member, "id") +
                               "), and none of switch " + std::to_string(owner.id) + " is found by that"
                         : "Switch " + std::to_string(owner.id) + " has no port " + std::to_string(number)) +
                        ": the library reports it as out of bounds, and the trunk does without it.",
                    "Add the port to the switch, or write the id of a port that it has.");
            }
        }
    });
}

void portInTwo(BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        if (!owner.isVitesse()) {
            continue;
        }
        std::map<unsigned int, xmlNodePtr> trunkOf;
        for (Trunk const& trunk : owner.trunks) {
            for (xmlNodePtr const member : board::children(trunk.element, "port")) {
                auto const [entry, first] =
                    trunkOf.emplace(BoardReading::trunkPortIdOf(member), trunk.element);
                if (!first && entry->second != trunk.element) {
                    report(
                        member,
                        "Port " + std::to_string(BoardReading::trunkPortIdOf(member)) +
                            " is in the trunk at line " + std::to_string(xmlGetLineNo(entry->second)) +
                            ", too: the library deals the traffic out for one trunk after the other, and the "
                            "ports of both are kept apart from it.",
                        "Leave the port in one trunk.");
                }
            }
        }
    }
}

/// The ports that carry frames of tag-based VLANs, by VLAN. A port that the library does not count is in all.
std::map<unsigned int, std::vector<unsigned int>> portsByVlan(BoardReading const& board, Switch const& owner,
                                                              Trunk const& trunk) {
    std::map<unsigned int, std::vector<unsigned int>> ports;
    for (auto const& [vlanId, vlan] : board.getVlans()) {
        for (auto const& entry : portsOf(owner, trunk)) {
            bool const isMember = board.membershipsOf(owner.id, entry.first).count(vlanId) != 0;
            if (vlan.tagBased && (isMember || entry.first >= owner.entryCount)) {
                ports[vlanId].push_back(entry.first);
            }
        }
    }
    return ports;
}

void unsupported(BoardReading const& board, Report const& report) {
    forEachTrunk(board, [&](Switch const& owner, Trunk const& trunk) {
        if (!owner.isMarvell()) {
            return;
        }
        std::string loop;
        for (auto const& [vlanId, ports] : portsByVlan(board, owner, trunk)) {
            if (ports.size() > 1 && loop.empty()) {
                loop = " Two links to the same neighbour are a loop: " + board::portsName(ports) +
                       " carry the frames of " + board.getVlans().at(vlanId).getName() + ".";
            }
        }
        report(
            trunk.element,
            "The driver of the 88E6096 has no trunks and says so at level 1: its ports stay single ones." +
                loop,
            "Leave the trunk out. Use one of its ports, listed in the VLANs; write the others into no VLAN, "
            "with portStatus=\"disabled\", and list all ports of the chip.");
    });
}

void onePort(BoardReading const& board, Report const& report) {
    forEachTrunkInChip(board, [&](Switch const& owner, Trunk const& trunk) {
        if (portsOf(owner, trunk).size() < 2) {
            report(trunk.element, "A trunk of fewer than two ports shares no traffic out.",
                   "List at least two ports of the switch.");
        }
    });
}

std::string speedOf(Port const& port) {
    if (port.connectedTo == "switchInterlink") {
        return "1000 Mbit/s";
    }
    return port.hasLinkSettings() ? "100 Mbit/s" : "whatever the host or the chip sets";
}

void speedsDiffer(BoardReading const& board, Report const& report) {
    forEachTrunkInChip(board, [&](Switch const& owner, Trunk const& trunk) {
        std::map<std::string, std::vector<unsigned int>> bySpeed;
        for (auto const& [id, port] : portsOf(owner, trunk)) {
            bySpeed[speedOf(*port)].push_back(id);
        }
        std::vector<std::string> texts;
        texts.reserve(bySpeed.size());
        for (auto const& [speed, ports] : bySpeed) {
            texts.push_back(board::portsName(ports) + " at " + speed);
        }
        if (texts.size() > 1) {
            report(trunk.element,
                   "The trunk's links have different speeds: " + board::listed(texts) +
                       ". The chip deals traffic out evenly, and the slow link loses frames.",
                   "Connect all ports of a trunk to the same kind of neighbour.");
        }
    });
}

std::set<unsigned int> vlansOf(BoardReading const& board, Switch const& owner, unsigned int portId) {
    std::set<unsigned int> vlans;
    for (auto const& entry : board.membershipsOf(owner.id, portId)) {
        if (board.getVlans().at(entry.first).tagBased) {
            vlans.insert(entry.first);
        }
    }
    return vlans;
}

void vlansDiffer(BoardReading const& board, Report const& report) {
    forEachTrunkInChip(board, [&](Switch const& owner, Trunk const& trunk) {
        std::map<std::set<unsigned int>, std::vector<unsigned int>> byVlans;
        for (auto const& entry : portsOf(owner, trunk)) {
            byVlans[vlansOf(board, owner, entry.first)].push_back(entry.first);
        }
        std::vector<std::string> texts;
        for (auto const& [vlans, ports] : byVlans) {
            std::vector<std::string> names;
            for (unsigned int const vlan : vlans) {
                names.push_back(board.getVlans().at(vlan).getName());
            }
            texts.push_back(board::portsName(ports) + " in " +
                            (names.empty() ? "none" : board::listed(names)));
        }
        if (texts.size() > 1) {
            report(trunk.element,
                   "The trunk's ports are not in the same tag-based VLANs: " + board::listed(texts) +
                       ". Frames that the chip deals out to a port which is not in their VLAN are lost.",
                   "List every port of a trunk in the same VLANs.");
        }
    });
}

/// The interlinks in use by which an 88E6096 carries the VLAN.
std::vector<unsigned int> interlinksOf(Switch const& owner, BoardReading::Vlan const& vlan) {
    std::vector<unsigned int> ports;
    for (BoardReading::Member const* const member : BoardReading::addedMembers(vlan.members, owner.id)) {
        Port const* const port = owner.findPort(static_cast<unsigned int>(member->portId));
        if (owner.isMarvell() && port != nullptr && port->connectedTo == "switchInterlink" &&
            port->comesUp()) {
            ports.push_back(port->id);
        }
    }
    return ports;
}

void interlinksInOneVlan(BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& [vlanId, vlan] : board.getVlans()) {
            std::vector<unsigned int> const ports = interlinksOf(owner, vlan);
            if (vlan.tagBased && ports.size() > 1) {
                report(
                    vlan.element,
                    "The VLAN leaves switch " + std::to_string(switchId) + " by interlinks at " +
                        board::portsName(ports) +
                        ". If two of them lead to one neighbour, or into a ring, frames go round for ever: "
                        "the library makes no trunks of an 88E6096 and has no spanning tree.",
                    "Nothing to do where there is no second way, which \"switchctl paths --cable\" tells; "
                    "otherwise leave the VLAN to one of them.");
            }
        }
    }
}

} // namespace

std::vector<Check> trunkChecks() {
    return {
        {"trunk-id-not-a-number", Severity::error, "a trunk id that is absent or not a number", idNotANumber},
        {"trunk-members-lost", Severity::error, "a trunk id by which the ports are not found", membersLost},
        {"trunk-id-shared", Severity::error, "a trunk id that another trunk has, too", idShared},
        {"trunk-outside-switch", Severity::error, "a trunk that no switch finds", outsideSwitch},
        {"trunk-port-unknown", Severity::error, "a trunk's port that the switch does not have", portUnknown},
        {"trunk-port-in-two", Severity::error, "a port in two trunks", portInTwo},
        {"trunk-unsupported", Severity::warning, "a trunk on an 88E6096", unsupported},
        {"trunk-of-one-port", Severity::warning, "a trunk of fewer than two ports", onePort},
        {"trunk-speeds-differ", Severity::warning, "trunk ports of different speeds", speedsDiffer},
        {"trunk-vlans-differ", Severity::warning, "trunk ports in different VLANs", vlansDiffer},
        {"88e6096-interlinks-in-one-vlan", Severity::note, "interlinks that may make a VLAN a loop",
         interlinksInOneVlan},
    };
}

} // namespace switchctl::check
