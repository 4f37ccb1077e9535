#include "board/paths/Cables.hpp"

#include <fmt/format.h>

#include "board/Wording.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace board {

using chips::PortAddress;

namespace {

bool hasPort(IntendedBoard const& board, PortAddress const& port) {
    auto const entry = board.getSwitches().find(port.switchId);
    return entry != board.getSwitches().end() &&
           port.portId < chips::ChipKinds::get(entry->second.model, "cables").getFacts().ports;
}

IntendedBoard::Port const& portAt(IntendedBoard const& board, PortAddress const& port) {
    return board.getSwitches().at(port.switchId).ports.at(port.portId);
}

} // namespace

std::optional<std::pair<PortAddress, PortAddress>> Cables::read(std::string const& text) {
    std::size_t const middle = text.find('=');
    if (middle == std::string::npos) {
        return std::nullopt;
    }
    auto const one = PortAddress::fromText(text.substr(0, middle));
    auto const other = PortAddress::fromText(text.substr(middle + 1));
    return one && other ? std::optional(std::pair(*one, *other)) : std::nullopt;
}

Cables::Cables(std::vector<std::string> const& texts, IntendedBoard const& board) : _texts(texts) {
    for (std::string const& text : texts) {
        plug(text, board);
    }
}

void Cables::plug(std::string const& text, IntendedBoard const& board) {
    auto const refuse = [&text](std::string const& reason) {
        throw chips::ToolError(chips::ExitStatus::usage, "cable \"" + text + "\": " + reason);
    };
    auto const ends = read(text);
    if (!ends) {
        refuse("not of the form SWITCH.PORT=SWITCH.PORT");
    }
    for (auto const& [end, other] : {*ends, std::pair(ends->second, ends->first)}) {
        if (!hasPort(board, end)) {
            refuse("the board has no port " + end.getText());
        }
        if (!_others.emplace(Place(end.switchId, end.portId), other).second) {
            refuse(end.getText() + " has a cable already");
        }
        _ports[end.switchId] |= PortSet{1} << end.portId;
    }
    findMismatches(text, board, ends->first, ends->second);
    findMismatches(text, board, ends->second, ends->first);
}

void Cables::findMismatches(std::string const& text, IntendedBoard const& board, PortAddress const& one,
                            PortAddress const& other) {
    auto const& far = portAt(board, other).memberships;
    std::vector<std::string> names;
    for (auto const& [vlan, membership] : portAt(board, one).memberships) {
        if (far.count(vlan) == 0) {
            names.push_back(vlanName(vlan, board.getVlans().at(vlan).written));
        }
    }
    if (!names.empty()) {
        _mismatches.push_back(fmt::format("cable {}: {} is in {}, {} is not", text, one.getText(),
                                          listed(names), other.getText()));
    }
}

PortSet Cables::getPorts(unsigned switchId) const {
    auto const ports = _ports.find(switchId);
    return ports == _ports.end() ? 0 : ports->second;
}

std::optional<PortAddress> Cables::follow(PortAddress const& port) const {
    auto const found = _others.find({port.switchId, port.portId});
    return found == _others.end() ? std::nullopt : std::optional(found->second);
}

} // namespace board
