#include "switchctl/check/CheckTable.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

using namespace std::string_literals;

namespace {

using Member = board::BoardReading::Member;
using Port = board::BoardReading::Port;
using Switch = board::BoardReading::Switch;

template <typename Texts> bool contains(Texts const& texts, std::string const& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Calls use(switch, port) for each port that is its switch's by the document, too.
template <typename Use> void forEachOwnPort(board::BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& [id, port] : owner.ports) {
            if (port.element->parent == owner.element) {
                use(owner, port);
            }
        }
    }
}

void idNotANumber(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//switch/port")) {
        std::string const text = board::attribute(element, "id").value_or("");
        std::optional<int> const number = board::decimalPrefix(text);
        if (!number) {
            report(
                element,
                "The library reports that the port id is not a valid integer value and makes a port without "
                "a number, which no VLAN, group or trunk finds.",
                "Write the chip's port number in decimal digits.");
        } else if (*number == board::BoardReading::noNumber) {
            report(element,
                   "-1 stands for a port without a number: the library makes the port, and no VLAN, group or "
                   "trunk finds it.",
                   "Write the chip's port number in decimal digits.");
        } else if (!board::isDigits(text) && *number >= 0) {
            report(element,
                   "The library reads port " + std::to_string(*number) + " and ignores the rest of \"" +
                       text + "\".",
                   "Write the chip's port number in decimal digits, without a prefix.");
        }
    }
}

void idDuplicate(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (xmlNodePtr const element : owner.droppedPorts) {
            auto const number = static_cast<unsigned int>(board::numberOr(element, "id", -1));
            if (element->parent == owner.ports.at(number).element->parent) {
                report(element,
                       "Switch " + std::to_string(switchId) +
                           " already has a port of that number: the library "
                           "keeps the first element and drops this one, but counts it.",
                       "Give every port of the switch a number of its own.");
            }
        }
    }
}

void beyondChip(board::BoardReading const& board, Report const& report) {
    forEachOwnPort(board, [&](Switch const& owner, Port const& port) {
        if (port.id < owner.portsOfChip() || owner.findPort(port.id) == nullptr) { // port-id-not-a-number
            return;
        }
        report(port.element,
               "An " + owner.chipName() + " has ports 0 to " + std::to_string(owner.portsOfChip() - 1) +
                   owner.byChip<std::string>(
                       ": the port's own settings are refused, and its bit in port masks is "
                       "another one's or none.",
                       ": what the library writes for the port goes to the registers of other "
                       "units of the chip, such as Global 1, or nowhere."),
               "Write the port that is meant, or leave the element out.");
    });
}

void typeUnknown(board::BoardReading const& board, Report const& report) {
    std::vector<std::string> const types = board::knownPortTypes();
    for (xmlNodePtr const element : board.find("//switch/port")) {
        if (!contains(types, board::attribute(element, "connectedTo").value_or(""))) {
            report(element,
                   "The library reports an unknown port type (connectedTo is " +
                       board::quotedAttribute(element, "connectedTo") +
                       ") and leaves the port's link as the chip has it.",
                   fmt::format(R"(Write connectedTo="{}" or "{}".)",
                               fmt::join(types.begin(), types.end() - 1, R"(", ")"), types.back()));
        }
    }
}

void statusUnknown(board::BoardReading const& board, Report const& report) {
    static constexpr std::array<char const*, 4> states{"disabled", "listening", "learning", "forwarding"};
    for (xmlNodePtr const element : board.find("//switch/port")) {
        if (!contains(states, board::attribute(element, "portStatus").value_or(""))) {
            report(element,
                   "The library takes the port for disabled (portStatus is " +
                       board::quotedAttribute(element, "portStatus") + ") and does not say so.",
                   R"(Write portStatus="disabled", "listening", "learning" or "forwarding".)");
        }
    }
}

void statusWithoutLink(board::BoardReading const& board, Report const& report) {
    forEachOwnPort(board, [&](Switch const&, Port const& port) {
        if (port.hasLinkSettings() && (port.portStatus == "listening" || port.portStatus == "learning")) {
            report(port.element,
                   "For a port that is connected to " + port.connectedTo +
                       " the library knows up and down only: \"" + port.portStatus +
                       "\" holds the link down.",
                   R"(Write portStatus="forwarding" or portStatus="disabled".)");
        }
    });
}

void heldDownInVlans(board::BoardReading const& board, Report const& report) {
    forEachOwnPort(board, [&](Switch const& owner, Port const& port) {
        if (!port.hasLinkSettings() || port.portStatus != "disabled") {
            return;
        }
        std::vector<std::string> vlans;
        for (auto const& [id, member] : board.membershipsOf(owner.id, port.id)) {
            vlans.push_back(board.getVlans().at(id).getName());
        }
        if (!vlans.empty()) {
            report(port.element,
                   "The port is disabled, and the library holds its link down: " + board::listed(vlans) +
                       " cannot reach what is connected there.",
                   R"(Nothing to do for a spare port; otherwise write portStatus="forwarding".)");
        }
    });
}

void statusWithoutEffect(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        std::vector<std::string> ports;
        for (auto const& [id, port] : owner.ports) {
            bool const notForwarding = port.portStatus != "forwarding";
            if (port.element->parent == owner.element && !port.hasLinkSettings() && notForwarding) {
                ports.push_back(port.getName());
            }
        }
        if (!ports.empty()) {
            report(owner.element,
                   "The portStatus of port" + std::string(ports.size() == 1 ? " " : "s ") +
                       board::listed(ports) +
                       " is recorded and never written to the chip: the library sets the links of smac, hmac "
                       "and switchInterlink ports only." +
                       owner.byChip(""s,
                                    " Nor would listening or learning hold in a VLAN if the host set it: "
                                    "VLANs have states of their own, always forwarding."s),
                   "Have the host disable the ports (ManagedSwitchPort::setPort), or keep them out of every "
                   "VLAN.");
        }
    }
}

void beyondCount(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        std::vector<unsigned int> ports;
        for (unsigned int id = owner.entryCount; id < owner.portsOfChip(); ++id) {
            ports.push_back(id);
        }
        if (ports.empty() || owner.found.empty()) {
            continue;
        }
        report(owner.element,
               "The library counts " + std::to_string(owner.entryCount) +
                   " ports here (port and trunk elements) and takes them for the first of the chip: " +
                   owner.byChip("the source masks of " + board::portsName(ports) +
                                    " are not cleared, and multicast groups forget these ports.",
                                "a new VLAN does not keep out " + board::portsName(ports) + "."),
               "List all " + std::to_string(owner.portsOfChip()) +
                   " ports of the chip, unused ones with portStatus=\"disabled\".");
    }
}

std::string namesOf(board::BoardReading const& board, std::map<unsigned int, Member const*> const& members) {
    std::vector<std::string> vlans;
    for (auto const& [id, member] : members) {
        if (board.getVlans().at(id).tagBased) {
            vlans.push_back(board.getVlans().at(id).getName());
        }
    }
    return vlans.empty() ? "" : board::listed(vlans);
}

void statusDoesNotHold(board::BoardReading const& board, Report const& report) {
    forEachOwnPort(board, [&](Switch const& owner, Port const& port) {
        std::string const vlans = namesOf(board, board.membershipsOf(owner.id, port.id));
        if (!owner.isMarvell() || port.hasLinkSettings() || port.portStatus == "forwarding" ||
            vlans.empty()) {
            return;
        }
        report(port.element,
               "The portStatus " + board::quotedAttribute(port.element, "portStatus") +
                   " never reaches the chip: the port forwards in " + vlans + " as soon as it has a link.",
               "Take the port out of its VLANs, or have the host disable it (ManagedSwitchPort::setPort).");
    });
}

void unlisted(board::BoardReading const& board, Report const& report) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        std::vector<unsigned int> ports;
        for (unsigned int id = 0; id < owner.portsOfChip(); ++id) {
            if (owner.ports.count(id) == 0) {
                ports.push_back(id);
            }
        }
        if (!owner.isMarvell() || owner.found.empty() || ports.empty()) {
            continue;
        }
        report(
            owner.element,
            "The document does not list " + board::portsName(ports) +
                " of the chip, and the library sets listed ports up only: without 802.1Q, what comes in "
                "there goes to every port, whatever VLANs these are in. That a port with 802.1Q sends such "
                "frames is assumed; no public source says that it does not.",
            "List all " + std::to_string(owner.portsOfChip()) +
                " ports of the chip, unused ones with portStatus=\"disabled\".");
    }
}

std::vector<Port const*> cpuPorts(board::BoardReading const& board) {
    std::vector<Port const*> found;
    for (auto const& [switchId, owner] : board.getSwitches()) {
        for (auto const& [id, port] : owner.ports) {
            if (port.connectedTo == "cpu") {
                found.push_back(&port);
                break;
            }
        }
    }
    return found;
}

void noCpuPort(board::BoardReading const& board, Report const& report) {
    if (!board.getSwitches().empty() && cpuPorts(board).empty()) {
        report(board.getSwitches().begin()->second.element,
               "The library warns that there is no CPU port and tells the host none.",
               "Write connectedTo=\"cpu\" at the port that the processor is connected to.");
    }
}

void severalCpuPorts(board::BoardReading const& board, Report const& report) {
    std::vector<xmlNodePtr> const elements = board.find("//switch/port[@connectedTo='cpu']");
    std::vector<Port const*> const candidates = cpuPorts(board);
    if (elements.size() < 2 || candidates.empty()) {
        return;
    }
    Port const& chosen = *candidates.back();
    for (xmlNodePtr const element : elements) {
        if (element != chosen.element) {
            report(
                element,
                "The library has one CPU port: the lowest number of the switch with the highest id that has "
                "one, which is port " +
                    std::to_string(chosen.id) + " at line " + std::to_string(xmlGetLineNo(chosen.element)) +
                    " and not this one.",
                "Leave connectedTo=\"cpu\" to one port.");
        }
    }
}

} // namespace

std::vector<Check> portChecks() {
    return {
        {"port-id-not-a-number", Severity::error, "a port id that is not a number, or is -1", idNotANumber},
        {"port-id-duplicate", Severity::error, "a port number that a switch has twice", idDuplicate},
        {"port-beyond-chip", Severity::error, "a port number that the chip does not have", beyondChip},
        {"port-type-unknown", Severity::error, "a connectedTo that is absent or unknown", typeUnknown},
        {"port-status-unknown", Severity::error, "a portStatus that is absent or unknown", statusUnknown},
        {"port-status-without-link", Severity::warning, "listening or learning where they hold the link down",
         statusWithoutLink},
        {"port-disabled-in-vlans", Severity::note, "a disabled port whose VLANs count on it",
         heldDownInVlans},
        {"port-status-without-effect", Severity::note, "ports whose portStatus never reaches the chip",
         statusWithoutEffect},
        {"ports-beyond-count", Severity::warning, "ports of a chip that the library does not count",
         beyondCount},
        {"88e6096-status-does-not-hold", Severity::warning,
         "a port that forwards in its VLANs, though it is not to", statusDoesNotHold},
        {"88e6096-port-unlisted", Severity::error, "ports that stay open to all, since they are not listed",
         unlisted},
        {"cpu-port-none", Severity::warning, "no CPU port", noCpuPort},
        {"cpu-port-several", Severity::warning, "several CPU ports", severalCpuPorts},
    };
}

} // namespace switchctl::check
