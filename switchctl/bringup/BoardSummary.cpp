#include "switchctl/bringup/BoardSummary.hpp"

#include <fmt/ostream.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "chips/ChipKinds.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/TrunkGroup.hpp"
#include "reference_host/StreamLog.hpp"
#include "switchctl/bringup/MemberList.hpp"

namespace switchctl::bringup {

namespace {

std::string addressOf(ManagedSwitchPort const& port) {
    chips::PortAddress const address{port.getSwitch().getId(), port.getId()};
    return address.portId == static_cast<unsigned int>(ManagedSwitch::noNumber)
               ? fmt::format("{}.(no number)", address.switchId)
               : address.getText();
}

/// Continues a line that is full on the next one.
void printWrapped(std::ostream& out, std::string const& heading, std::vector<std::string> const& words) {
    constexpr std::size_t width = 100;
    constexpr char const* indentation = "      ";
    std::string line = heading;
    for (std::string const& word : words) {
        if (line.size() + 1 + word.size() > width && line != indentation) {
            out << line << '\n';
            line = indentation + word;
        } else {
            line += " " + word;
        }
    }
    out << line << '\n';
}

/// A section of the summary that may have nothing to say.
template <typename Items> bool printHeading(std::ostream& out, char const* heading, Items const& items) {
    bool const empty = std::begin(items) == std::end(items);
    out << heading << (empty ? ": none\n" : "\n");
    return !empty;
}

std::string secondsText(std::uint64_t nanoseconds) {
    constexpr std::uint64_t microsecondsPerSecond = 1000000;
    std::uint64_t const microseconds = nanoseconds / 1000;
    return fmt::format("{}.{:06} s", microseconds / microsecondsPerSecond,
                       microseconds % microsecondsPerSecond);
}

using Messages = std::vector<reference_host::LogMessage>;

/// Each message once, where it came first, and how often it came: a switch that is missing is missed by each
/// port.
std::vector<std::pair<reference_host::LogMessage, std::size_t>> counted(Messages const& messages) {
    std::vector<std::pair<reference_host::LogMessage, std::size_t>> result;
    std::map<std::pair<reference_host::LogMessage::Operation, std::string>, std::size_t> places;
    for (reference_host::LogMessage const& message : messages) {
        auto const [place, isNew] =
            places.emplace(std::make_pair(message.operation, message.text), result.size());
        if (isNew) {
            result.emplace_back(message, 0);
        }
        ++result[place->second].second;
    }
    return result;
}

} // namespace

BoardSummary::BoardSummary(board::BoardReading const& document, board::BoardSession& session)
    : _document(document), _session(session) {}

void BoardSummary::print(std::ostream& out) const {
    printSwitches(out);
    printPorts(out);
    printVlans(out);
    printTrunks(out);
    printMulticastGroups(out);
    printCpuPort(out);
    printEffort(out);
}

void BoardSummary::printComplaints(std::ostream& out) const {
    auto const complaints = _session.getLog().getComplaints();
    if (!printHeading(out, "warnings and errors", complaints)) {
        return;
    }
    reference_host::StreamLog::Options options;
    options.timeStamps = false;
    reference_host::StreamLog log(out, options);
    for (auto& [complaint, count] : counted(complaints)) {
        if (count > 1) {
            complaint.text.erase(complaint.text.find_last_not_of('\n') + 1);
            complaint.text += fmt::format(" ({} times)", count);
        }
        out << "  ";
        log.write(complaint);
    }
}

void BoardSummary::printSwitches(std::ostream& out) const {
    auto const& switches = _document.getWanted();
    auto const up = std::count_if(switches.begin(), switches.end(),
                                  [this](auto const& entry) { return _session.isUp(entry); });
    auto const nameOf = [this](board::BoardReading::Wanted const& entry) {
        return board::idName(static_cast<int>(entry.id), entry.writtenId) +
               _document.getLabels().after(std::to_string(entry.id));
    };
    std::size_t width = 0;
    for (auto const& entry : switches) {
        width = std::max(width, nameOf(entry).size());
    }
    out << "switches: " << up << " of " << switches.size() << " found\n";
    for (auto const& entry : switches) {
        fmt::print(out, "  switch {:{}}  {:8}", nameOf(entry), width, entry.model);
        if (_session.isUp(entry)) {
            out << "  found, " << _session.getManager().getManagedSwitch(entry.id)->getPorts().size()
                << " ports\n";
        } else {
            out << "  missing: "
                << (chips::ChipKinds::find(entry.model) != nullptr ? "the chip does not answer"
                                                                   : "no such driver")
                << '\n';
        }
    }
}

void BoardSummary::printPorts(std::ostream& out) const {
    using Kind = std::pair<ManagedSwitchPort::PortType, ManagedSwitchPort::PortEnabledStatus>;
    std::map<Kind, std::vector<ManagedSwitchPort const*>> ports;
    for (auto const& [switchId, managedSwitch] : _session.getManager().getManagedSwitches()) {
        for (auto const& [portId, port] : managedSwitch->getPorts()) {
            ports[{port->getType(), port->getState()}].push_back(port);
        }
    }
    if (!printHeading(out, "ports", ports)) {
        return;
    }
    for (auto const& [kind, members] : ports) {
        fmt::print(out, "  {:16}  {:10}", board::portTypeName(kind.first), board::portStateName(kind.second));
        for (ManagedSwitchPort const* const port : members) {
            out << ' ' << _document.getLabels().nameOf(addressOf(*port));
        }
        out << '\n';
    }
}

void BoardSummary::printVlans(std::ostream& out) const {
    if (!printHeading(out, "VLANs", _document.getVlans())) {
        return;
    }
    for (auto const& [id, vlan] : _document.getVlans()) {
        printMembers(out, fmt::format("{}  {}-based", vlan.getName(), vlan.tagBased ? "tag" : "port"),
                     vlan.members, vlan.tagBased);
    }
}

/// The members that count, then the others; lines end between two of them.
void BoardSummary::printMembers(std::ostream& out, std::string const& heading,
                                std::vector<board::BoardReading::Member> const& members,
                                bool withTags) const {
    MemberList const list(members, _session.getManager(), withTags);
    std::vector<std::string> words;
    for (auto const& member : list.counted) {
        words.push_back(MemberList::nameOf(member, _document.getLabels()));
        if (withTags) {
            words.back() +=
                "(" + MemberList::tagOf(member, "ingress") + "/" + MemberList::tagOf(member, "egress") + ")";
        }
    }
    if (words.empty()) {
        words.emplace_back("no members");
    }
    if (!list.leftOut.empty()) {
        words.back() += "; left out:";
    }
    for (auto const& member : list.leftOut) {
        words.push_back(MemberList::nameOf(member, _document.getLabels()));
    }
    printWrapped(out, "  " + heading + ":", words);
}

void BoardSummary::printTrunks(std::ostream& out) const {
    struct Trunk {
        unsigned int switchId;
        std::string name;
        TrunkGroup const* group;
    };
    std::vector<Trunk> trunks;
    for (auto const& [switchId, managedSwitch] : _session.getManager().getManagedSwitches()) {
        for (auto const& [key, trunk] : managedSwitch->getTrunkGroups()) {
            // The library keeps them by their places in the document.
            trunks.push_back(
                {switchId, _document.getSwitches().at(switchId).trunks.at(key).getName(), trunk});
        }
    }
    if (!printHeading(out, "trunks", trunks)) {
        return;
    }
    for (auto const& [switchId, name, trunk] : trunks) {
        chips::ChipKind const* const kind = kindOf(switchId);
        out << "  switch " << switchId << " trunk " << name;
        if (kind != nullptr && !kind->getFacts().hasTrunks) {
            out << " (not set up: the library has no trunks of an " << kind->getFacts().name << ')';
        }
        out << ':' << (trunk->getTrunkedPorts().empty() ? " no members" : "");
        for (auto const& [portId, port] : trunk->getTrunkedPorts()) {
            out << ' ' << _document.getLabels().nameOf(chips::PortAddress{switchId, portId}.getText())
                << (port == nullptr ? " (no such port)" : "");
        }
        out << '\n';
    }
}

/// Null when tools know no such chip.
chips::ChipKind const* BoardSummary::kindOf(unsigned switchId) const {
    for (auto const& entry : _document.getWanted()) {
        if (entry.id == switchId) {
            return chips::ChipKinds::find(entry.model);
        }
    }
    return nullptr;
}

void BoardSummary::printMulticastGroups(std::ostream& out) const {
    if (!printHeading(out, "multicast groups", _document.getGroups())) {
        return;
    }
    for (auto const& group : _document.getGroups()) {
        printMembers(out, fmt::format("{} in {}", group.address, group.getVlanName()), group.members, false);
    }
}

void BoardSummary::printCpuPort(std::ostream& out) const {
    out << "CPU port: ";
    if (ManagedSwitchPort const* const port = _session.getManager().getCpuPort()) {
        out << _document.getLabels().nameOf(addressOf(*port)) << '\n';
    } else {
        out << "none\n";
    }
}

void BoardSummary::printEffort(std::ostream& out) const {
    simulation::SimulatedBoard* const board = _session.getBoard();
    if (board == nullptr) {
        out << "register accesses: not counted on hardware\n";
        return;
    }
    board::BoardSession::Effort const& effort = _session.getEffort();
    fmt::print(out,
               "register accesses: {} in chips, by {} on the bus\n"
               "predicted bus time: {}\n"
               "predicted start-up time: {}\n"
               "driver misuse seen by the models: {}\n",
               effort.registerAccesses, effort.busAccesses, secondsText(effort.busNanoseconds),
               secondsText(effort.elapsedNanoseconds), board->getMisuse().getSize());
}

} // namespace switchctl::bringup
