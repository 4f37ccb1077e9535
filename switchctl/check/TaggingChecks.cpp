#include "switchctl/check/CheckTable.hpp"

#include <algorithm>
#include <set>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

using namespace std::string_literals;

namespace {

using Switch = board::BoardReading::Switch;

/// How one port treats the tags of one VLAN.
struct Tagging {
    std::string vlan;
    xmlNodePtr element = nullptr;
    std::string ingress;
    std::string egress;

    bool setsDefaultVlan() const { return ingress == "addTag" || ingress == "addTagIfUntagged"; }
};

std::vector<Tagging> taggingsOf(board::BoardReading const& board, unsigned int switchId,
                                unsigned int portId) {
    std::vector<Tagging> taggings;
    for (auto const& [vlanId, member] : board.membershipsOf(switchId, portId)) {
        if (board.getVlans().at(vlanId).tagBased) {
            Tagging tagging;
            tagging.vlan = board.getVlans().at(vlanId).getName();
            tagging.element = member->element;
            tagging.ingress = board::attribute(member->element, "ingress").value_or("");
            tagging.egress = board::attribute(member->element, "egress").value_or("");
            taggings.push_back(tagging);
        }
    }
    return taggings;
}

/// Calls use(switch, port id, taggings by ascending VLAN id) for each port that is in several VLANs.
template <typename Use> void forEachSharedPort(board::BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& port : owner.ports) {
            std::vector<Tagging> const taggings = taggingsOf(board, switchId, port.first);
            if (taggings.size() > 1) {
                use(owner, port.first, taggings);
            }
        }
    }
}

std::string nameOf(Switch const& owner, unsigned int portId) {
    return "Port " + board::portAddress(static_cast<int>(owner.id), static_cast<int>(portId));
}

void severalDefaults(board::BoardReading const& board, Report const& report) {
    forEachSharedPort(board, [&](Switch const& owner, unsigned int portId,
                                 std::vector<Tagging> const& taggings) {
        Tagging const* last = nullptr;
        for (Tagging const& tagging : taggings) {
            if (!tagging.setsDefaultVlan()) {
                continue;
            }
            if (last != nullptr) {
                report(
                    tagging.element,
                    nameOf(owner, portId) +
                        " has one VLAN for untagged frames. The library sets it for each VLAN in turn, so " +
                        tagging.vlan + " replaces " + last->vlan + ", line " +
                        std::to_string(xmlGetLineNo(last->element)) + ".",
                    "Write ingress=\"validateTag\" for all VLANs of the port but one.");
            }
            last = &tagging;
        }
    });
}

void forcedOrUndone(board::BoardReading const& board, Report const& report) {
    forEachSharedPort(board, [&](Switch const& owner, unsigned int portId,
                                 std::vector<Tagging> const& taggings) {
        for (Tagging const& tagging : taggings) {
            if (tagging.ingress != "addTag") {
                continue;
            }
            Tagging const& last = taggings.back();
            report(tagging.element,
                   last.ingress == "addTag"
                       ? nameOf(owner, portId) + " puts every frame into " + last.vlan +
                             ", tagged ones too: nothing comes in for the other VLANs that it is in."
                       : nameOf(owner, portId) + " is to put every frame into " + tagging.vlan + ", but " +
                             last.vlan + ", line " + std::to_string(xmlGetLineNo(last.element)) +
                             ", is set up later and undoes it: tagged frames keep their VLAN.",
                   "Write ingress=\"addTagIfUntagged\" here, or leave the port in one VLAN.");
        }
    });
}

void severalUntagged(board::BoardReading const& board, Report const& report) {
    forEachSharedPort(
        board, [&](Switch const& owner, unsigned int portId, std::vector<Tagging> const& taggings) {
            std::vector<std::string> vlans;
            xmlNodePtr last = nullptr;
            for (Tagging const& tagging : taggings) {
                if (tagging.egress == "stripTag") {
                    vlans.push_back(tagging.vlan);
                    last = tagging.element;
                }
            }
            if (vlans.size() > 1) {
                report(last,
                       nameOf(owner, portId) + " is to send the frames of " + board::listed(vlans) +
                           " without tags: who receives them cannot tell the VLANs apart.",
                       "Write egress=\"validateTag\" for all VLANs of the port but one.");
            }
        });
}

void egressShared(board::BoardReading const& board, Report const& report) {
    forEachSharedPort(board, [&](Switch const& owner, unsigned int portId,
                                 std::vector<Tagging> const& taggings) {
        std::set<std::string> egresses;
        for (Tagging const& tagging : taggings) {
            egresses.insert(tagging.egress);
        }
        Tagging const& last = taggings.back();
        if (owner.isVitesse() && egresses.size() > 1) {
            report(
                last.element,
                "A VSC7390 sends the frames of all VLANs of a port with tags, or those of none. The highest "
                "VLAN of port " +
                    board::portAddress(static_cast<int>(owner.id), static_cast<int>(portId)) + ", " +
                    last.vlan + ", decides: egress=\"" + last.egress + "\" for all.",
                "Write the same egress for all VLANs of the port.");
        }
    });
}

bool isInTagBasedVlan(board::BoardReading const& board, unsigned int switchId, unsigned int portId) {
    return !taggingsOf(board, switchId, portId).empty();
}

/// Whether the port is to stand aside for another one of its trunk, since an 88E6096 has none: the one that
/// is in a VLAN, or else the lowest in use.
bool standsAside(board::BoardReading const& board, Switch const& owner, unsigned int portId) {
    std::set<unsigned int> mates;
    for (board::BoardReading::Trunk const& trunk : owner.trunks) {
        std::set<unsigned int> ports;
        for (xmlNodePtr const member : trunk.members) {
            ports.insert(board::BoardReading::trunkPortIdOf(member));
        }
        if (owner.isMarvell() && ports.count(portId) != 0) {
            mates.insert(ports.begin(), ports.end());
        }
    }
    return std::any_of(mates.begin(), mates.end(), [&](unsigned int mate) {
        board::BoardReading::Port const* const port = owner.findPort(mate);
        bool const isLower = mate < portId && port != nullptr && port->portStatus != "disabled";
        return mate != portId && (isLower || isInTagBasedVlan(board, owner.id, mate));
    });
}

void inNoVlan(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& [id, port] : owner.ports) {
            // The library keeps a port out of VLANs only when its number is below the count of ports; see
            // ports-beyond-count.
            bool const keptOut = owner.byChip(true, id < owner.entryCount);
            if (port.element->parent != owner.element || port.portStatus == "disabled" || !keptOut ||
                isInTagBasedVlan(board, switchId, id) || standsAside(board, owner, id)) { // trunk-unsupported
                continue;
            }
            report(port.element,
                   owner.byChip(
                       "The port is in no tag-based VLAN: its untagged frames belong to VLAN 1 of the chip, "
                       "whose "
                       "members are all ports unless the document has a VLAN 1."s,
                       "The port is in no tag-based VLAN: an 88E6096 that the library has set up drops every "
                       "frame of a VLAN that the port is not in, so nothing passes. Port-based VLANs do not "
                       "help."s),
                   "Write the port into a tag-based VLAN, or portStatus=\"disabled\" if it is not used.");
        }
    }
}

/// Of the ports in use, those whose taggings, by ascending VLAN id, are as asked for.
template <typename Predicate>
std::vector<unsigned int> portsWith(board::BoardReading const& board, Switch const& owner,
                                    Predicate predicate) {
    std::vector<unsigned int> ports;
    for (auto const& [id, port] : owner.ports) {
        std::vector<Tagging> const taggings = taggingsOf(board, owner.id, id);
        if (port.portStatus != "disabled" && !taggings.empty() && predicate(taggings)) {
            ports.push_back(id);
        }
    }
    return ports;
}

/// Ports that leave the VLAN for untagged frames as the chip has it.
std::vector<unsigned int> withoutDefaultVlan(board::BoardReading const& board, Switch const& owner) {
    constexpr unsigned int vlanOfChip = 1;
    auto const defined = board.getVlans().find(vlanOfChip);
    if (defined != board.getVlans().end() && defined->second.tagBased &&
        !board::BoardReading::addedMembers(defined->second.members, owner.id).empty()) {
        return {}; // The VLAN takes members only.
    }
    return portsWith(board, owner, [](std::vector<Tagging> const& taggings) {
        return std::none_of(taggings.begin(), taggings.end(),
                            [](Tagging const& tagging) { return tagging.setsDefaultVlan(); });
    });
}

void vlanHopping(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        std::vector<unsigned int> const tagged =
            portsWith(board, owner, [](auto const& taggings) { return taggings.back().ingress != "addTag"; });
        std::vector<unsigned int> const untagged = withoutDefaultVlan(board, owner);
        if (!owner.isVitesse() || tagged.empty()) {
            continue;
        }
        report(
            owner.element,
            "Frames of VLANs that the document does not have reach all ports that are up, whatever VLANs "
            "these are in: tagged ones from " +
                board::portsName(tagged) +
                (untagged.empty() ? ""
                                  : ", untagged ones from " + board::portsName(untagged) +
                                        ", if the chip takes them for VLAN 1, as is assumed") +
                ". That holds if the chip clears its VLANs to all members, as is likely.",
            "Write ingress=\"addTag\" where stations need no tags, or at least \"addTagIfUntagged\" in one "
            "VLAN of the port. What is connected where tags come in has to be trusted, or filter by itself.");
    }
}

} // namespace

std::vector<Check> taggingChecks() {
    return {
        {"untagged-vlan-replaced", Severity::warning,
         "a port that is to put untagged frames into several VLANs", severalDefaults},
        {"tag-forced-or-undone", Severity::warning, "addTag at a port that is in several VLANs",
         forcedOrUndone},
        {"untagged-in-several-vlans", Severity::warning, "a port that sends several VLANs without tags",
         severalUntagged},
        {"vsc7390-egress-shared", Severity::warning, "a VSC7390 port with several kinds of egress",
         egressShared},
        {"port-in-no-vlan", Severity::warning, "a port in use that is in no tag-based VLAN", inNoVlan},
        {"vsc7390-vlan-hopping", Severity::error, "frames that reach all VLANs by having none or another",
         vlanHopping},
    };
}

} // namespace switchctl::check
