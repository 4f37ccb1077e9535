#include "switchctl/check/CheckTable.hpp"

#include <algorithm>

#include "board/BoardReading.hpp"
#include "board/Wording.hpp"
#include "switchctl/check/SourceMasks.hpp"

namespace switchctl::check {

namespace {

using Member = board::BoardReading::Member;
using Switch = board::BoardReading::Switch;
using Vlan = board::BoardReading::Vlan;

/// Calls use(switch, VLAN, numbers of its ports on the switch) for each VLAN that has several there.
template <typename Use> void forEachVitesseVlan(board::BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& [vlanId, vlan] : board.getVlans()) {
            std::vector<unsigned int> ports;
            for (Member const* const member : board::BoardReading::addedMembers(vlan.members, switchId)) {
                ports.push_back(static_cast<unsigned int>(member->portId));
            }
            if (owner.isVitesse() && ports.size() > 1) {
                use(owner, vlan, ports);
            }
        }
    }
}

/// Those ports that neither reach another one of them nor are reached.
std::vector<unsigned int> isolated(std::vector<unsigned int> const& ports, SourceMasks const& masks) {
    std::vector<unsigned int> found;
    std::copy_if(ports.begin(), ports.end(), std::back_inserter(found), [&](unsigned int port) {
        return std::none_of(ports.begin(), ports.end(), [&](unsigned int other) {
            return masks.isOpen(port, other) || masks.isOpen(other, port);
        });
    });
    return found;
}

void opensNoPath(board::BoardReading const& board, Report const& report) {
    forEachVitesseVlan(board, [&](Switch const& owner, Vlan const& vlan,
                                  std::vector<unsigned int> const& ports) {
        std::vector<unsigned int> const alone = isolated(ports, SourceMasks(board, owner));
        if (!vlan.tagBased || alone.empty()) {
            return;
        }
        report(
            vlan.element,
            "A tag-based VLAN opens no path on a VSC7390 by itself: when start-up is over, no source mask "
            "lets "
            "frames go between " +
                std::string(alone.size() == ports.size() ? "its " : "the VLAN's other ports and ") +
                board::portsName(alone) + " of switch " + std::to_string(owner.id) + ".",
            "Have the host start these ports (ManagedSwitchPort::setPort), or connect what is a smac, an "
            "hmac or "
            "a switchInterlink as such, forwarding; without any of these, a port-based VLAN opens the path.");
    });
}

void portBasedOverwritten(board::BoardReading const& board, Report const& report) {
    forEachVitesseVlan(board, [&](Switch const& owner, Vlan const& vlan,
                                  std::vector<unsigned int> const& ports) {
        if (vlan.tagBased || !SourceMasks(board, owner).areRewritten()) {
            return;
        }
        report(
            vlan.element,
            "The library opens the ways between " + board::portsName(ports) + " of switch " +
                std::to_string(owner.id) +
                " and then sets up links, which rewrites all source masks of a VSC7390: each port that is up "
                "may then send to all others that are up, whatever port-based VLANs say.",
            "Keep ports apart by tag-based VLANs on this chip.");
    });
}

} // namespace

std::vector<Check> pathChecks() {
    return {
        {"vsc7390-vlan-opens-no-path", Severity::warning, "a tag-based VLAN without a path on a VSC7390",
         opensNoPath},
        {"vsc7390-port-based-overwritten", Severity::warning, "a port-based VLAN that links overwrite",
         portBasedOverwritten},
    };
}

} // namespace switchctl::check
