#include "switchctl/check/CheckTable.hpp"

#include <algorithm>

#include "board/BoardReading.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

namespace {

using board::BoardReading;
using Chip = BoardReading::Chip;
using Switch = BoardReading::Switch;

using VlansOfSwitch = std::vector<BoardReading::Vlan const*>;

/// Tag-based VLANs with members on the switch, by id.
VlansOfSwitch vlansOf(BoardReading const& board, Switch const& owner) {
    VlansOfSwitch found;
    for (auto const& [id, vlan] : board.getVlans()) {
        if (vlan.tagBased && !BoardReading::addedMembers(vlan.members, owner.id).empty()) {
            found.push_back(&vlan);
        }
    }
    return found;
}

template <typename Use> void forEachSwitch(BoardReading const& board, Chip chip, Use use) {
    for (auto const& [id, owner] : board.getSwitches()) {
        if (owner.chip == chip) {
            use(owner, vlansOf(board, owner));
        }
    }
}

void openWhileStarting(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::marvell88E6096, [&](Switch const& owner, VlansOfSwitch const& vlans) {
        if (vlans.size() > 1) {
            report(owner.element,
                   "From reset until start-up writes a port's 802.1QMode, which comes last, the port sends "
                   "what it gets to all others, whatever VLANs they are in.",
                   "Keep stations that must not meet unplugged, or held down, until the board is up.");
        }
    });
}

void silentWhileRestarting(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::marvell88E6096, [&](Switch const& owner, VlansOfSwitch const& vlans) {
        if (!vlans.empty()) {
            report(
                owner.element,
                "A start-up beside running traffic empties the VLAN table first: nothing passes until each "
                "VLAN is complete again.",
                "Plan a restart of the host as an interruption of a few milliseconds to tens of them.");
        }
    });
}

void portsByStrap(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::marvell88E6096, [&](Switch const& owner, VlansOfSwitch const&) {
        std::vector<unsigned int> ports;
        for (auto const& [id, port] : owner.ports) {
            if (!port.hasLinkSettings() && port.portStatus == "forwarding" && id < owner.portsOfChip()) {
                ports.push_back(id);
            }
        }
        if (!ports.empty()) {
            report(
                owner.element,
                "Start-up enables smac, hmac and switchInterlink ports only. If the chip's strap has ports "
                "begin disabled, as is likely where it says that a processor is attached, nothing passes "
                "through " +
                    board::portsName(ports) + ".",
                "Use the other strap (Global 1 status, bits 13:12), or have the host set the ports "
                "(ManagedSwitchPort::setPort).");
        }
    });
}

void statesShared(BoardReading const& board, Report const& report) {
    constexpr unsigned numberOfStateSets = 64;
    forEachSwitch(board, Chip::marvell88E6096, [&](Switch const& owner, VlansOfSwitch const& vlans) {
        std::map<unsigned int, BoardReading::Vlan const*> firstOf;
        for (BoardReading::Vlan const* const vlan : vlans) {
            auto const [first, isFirst] = firstOf.emplace(vlan->id % numberOfStateSets, vlan);
            if (!isFirst) {
                report(vlan->element,
                       "On switch " + std::to_string(owner.id) +
                           " the VLAN shares its spanning-tree states "
                           "with " +
                           first->second->getName() +
                           ", whose id is the same modulo 64: a port that is closed or opened in one is so "
                           "in the other.",
                       "Nothing to do where no spanning tree runs; otherwise choose ids that differ modulo "
                       "64.");
            }
        }
    });
}

/// Whether a port-based VLAN holds several ports of one trunk.
bool opensTrunk(BoardReading const& board, Switch const& owner) {
    auto const isHeldTwice = [&](BoardReading::Trunk const& trunk, BoardReading::Vlan const& vlan) {
        auto const members = BoardReading::addedMembers(vlan.members, owner.id);
        return std::count_if(members.begin(), members.end(), [&](BoardReading::Member const* member) {
                   return std::any_of(trunk.members.begin(), trunk.members.end(), [&](xmlNodePtr element) {
                       return BoardReading::trunkPortIdOf(element) == static_cast<unsigned>(member->portId);
                   });
               }) > 1;
    };
    return std::any_of(board.getVlans().begin(), board.getVlans().end(), [&](auto const& entry) {
        return !entry.second.tagBased &&
               std::any_of(owner.trunks.begin(), owner.trunks.end(), [&](BoardReading::Trunk const& trunk) {
                   return isHeldTwice(trunk, entry.second);
               });
    });
}

void openWhileRestarting(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::vitesse7390, [&](Switch const& owner, VlansOfSwitch const& vlans) {
        if (!vlans.empty()) {
            report(
                owner.element,
                "In a start-up beside running traffic the VLAN table is cleared, likely to all members, "
                "before the source masks are closed, so that all ports are one VLAN for some microseconds.",
                "Hold the links down, or reset the chip, before the host starts again.");
        }
    });
}

void trunkLoopsWhileRestarting(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::vitesse7390, [&](Switch const& owner, VlansOfSwitch const&) {
        if (opensTrunk(board, owner)) {
            report(
                owner.element,
                "In a start-up beside running traffic a port-based VLAN opens the way between the ports of "
                "a trunk until the trunk is written again.",
                "Leave all ports of a trunk but one out of port-based VLANs; or hold the links down, or "
                "reset the chip, before the host starts again.");
        }
    });
}

void neverForgets(BoardReading const& board, Report const& report) {
    forEachSwitch(board, Chip::vitesse7390, [&](Switch const& owner, VlansOfSwitch const&) {
        report(owner.element,
               "The library never has a VSC7390 age its addresses, and the chip likely does not by itself: "
               "frames to a station that has moved go to its old port until it sends something.",
               "Nothing to do where stations speak first, as most do after a move.");
    });
}

} // namespace

std::vector<Check> conditionChecks() {
    return {
        {"88e6096-open-while-starting", Severity::note, "VLANs that a start-up keeps apart only at its end",
         openWhileStarting},
        {"88e6096-silent-while-restarting", Severity::note, "traffic that a second start-up interrupts",
         silentWhileRestarting},
        {"88e6096-ports-by-strap", Severity::note, "ports that pass nothing if a strap has them disabled",
         portsByStrap},
        {"88e6096-states-shared", Severity::note, "VLANs that share spanning-tree states", statesShared},
        {"vsc7390-open-while-restarting", Severity::note, "VLANs that a second start-up opens for a while",
         openWhileRestarting},
        {"vsc7390-trunk-loops-while-restarting", Severity::warning,
         "a trunk that a second start-up makes a loop for a while", trunkLoopsWhileRestarting},
        {"vsc7390-never-forgets", Severity::note, "addresses that never age", neverForgets},
    };
}

} // namespace switchctl::check
