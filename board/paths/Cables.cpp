#include "board/paths/Cables.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "board/Wording.hpp"
#include "board/intent/Intent.hpp"
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

std::string textOf(std::pair<PortAddress, PortAddress> const& ends) {
    return ends.first.getText() + "=" + ends.second.getText();
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

Cables::Cables(std::vector<std::string> const& typed, IntendedBoard const& board, std::string const& file,
               std::set<unsigned> const& unread) {
    for (auto const& [id, owner] : board.getSwitches()) {
        for (unsigned number = 0; number < owner.ports.size(); ++number) {
            if (!owner.ports[number].connectsTo.empty()) {
                plugDocument(board, {id, number}, file, unread);
            }
        }
    }
    std::set<std::string> const known(_texts.begin(), _texts.end());
    for (std::string const& text : typed) {
        Refusal const refuse = [&text](std::string const& reason) {
            throw chips::ToolError(chips::ExitStatus::usage, fmt::format("cable \"{}\": {}", text, reason));
        };
        auto const ends = read(text);
        if (!ends) {
            refuse("not of the form SWITCH.PORT=SWITCH.PORT");
        }
        if (known.count(textOf(*ends)) == 0 && known.count(textOf({ends->second, ends->first})) == 0) {
            plug(text, *ends, board, refuse);
        }
    }
}

/// The cable that the port's connectsTo says.
void Cables::plugDocument(IntendedBoard const& board, PortAddress const& port, std::string const& file,
                          std::set<unsigned> const& unread) {
    int const line = portAt(board, port).line;
    Refusal const refuse = [&](std::string const& reason) {
        throw chips::ToolError(
            chips::ExitStatus::badDocument,
            fmt::format("{}:{}: the connectsTo of {}: {}", file, line, port.getText(), reason));
    };
    auto const other = PortAddress::fromText(portAt(board, port).connectsTo);
    if (!other) {
        refuse("not of the form SWITCH.PORT");
    }
    Ends const ends{port, *other};
    std::string const text = textOf(ends);
    bool const isUnread = unread.count(port.switchId) != 0 || unread.count(other->switchId) != 0;
    std::string const turned = textOf({*other, port});
    if (isUnread && std::find(_leftOut.begin(), _leftOut.end(), turned) == _leftOut.end()) {
        _leftOut.push_back(text);
    }
    if (!isUnread && !isPlugged(ends)) {
        plug(text, ends, board, refuse);
    }
}

bool Cables::isPlugged(Ends const& ends) const {
    auto const other = follow(ends.first);
    return other && other->switchId == ends.second.switchId && other->portId == ends.second.portId;
}

void Cables::plug(std::string const& text, Ends const& ends, IntendedBoard const& board,
                  Refusal const& refuse) {
    for (auto const& [end, other] : {ends, std::pair(ends.second, ends.first)}) {
        if (!hasPort(board, end)) {
            refuse("the board has no port " + end.getText());
        }
        auto const [entry, isNew] = _others.emplace(Place(end.switchId, end.portId), other);
        if (!isNew) {
            refuse(fmt::format("{} has a cable already, to {}", end.getText(), entry->second.getText()));
        }
        _ports[end.switchId] |= PortSet{1} << end.portId;
    }
    _texts.push_back(text);
    for (auto const& [one, other] : {ends, std::pair(ends.second, ends.first)}) {
        findMismatches(text, board, one, other);
        findRetagging(text, board, one, other);
    }
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

void Cables::findRetagging(std::string const& text, IntendedBoard const& board, PortAddress const& sender,
                           PortAddress const& receiver) {
    auto const nameOf = [&board](unsigned vlan) { return vlanName(vlan, board.getVlans().at(vlan).written); };
    auto const& far = portAt(board, receiver);
    for (auto const& [vlan, membership] : portAt(board, sender).memberships) {
        auto const sent = membership.stripsTag ? FrameKind::Tags::none() : FrameKind::Tags::one(vlan);
        auto const taken = Intent::vlanOf(far, sent);
        if (far.memberships.count(vlan) != 0 && taken != vlan) {
            _mismatches.push_back(
                fmt::format("cable {}: frames of {} leave {} {} (line {}), {} takes these for {}", text,
                            nameOf(vlan), sender.getText(), sent.describe(), membership.line,
                            receiver.getText(), taken ? nameOf(*taken) + "'s" : "no VLAN's"));
        }
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
