#include "board/paths/PathComparison.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "board/Wording.hpp"

namespace board {

namespace {

constexpr PortSet bitOf(unsigned port) {
    return PortSet{1} << port;
}

bool isOneOrNone(PortSet ports) {
    return (ports & (ports - 1)) == 0;
}

template <typename Action> void forEachPort(PortSet ports, Action const& action) {
    for (unsigned port = 0; ports != 0; ++port, ports >>= 1U) {
        if ((ports & 1U) != 0) {
            action(port);
        }
    }
}

} // namespace

PathComparison::PathComparison(Intent const& intent, RegisterPaths const& registers,
                               AskedFrames const& frames)
    : PathComparison(intent, registers, frames, allPorts(registers)) {}

PathComparison::PathComparison(Intent const& intent, RegisterPaths const& registers,
                               AskedFrames const& frames, Selection const& selection)
    : _intent(intent),
      _registers(registers),
      _frames(frames),
      _selection(selection),
      _paths(frames),
      _differences(frames) {
    for (std::size_t destination = 0; destination < frames.getDestinations().size(); ++destination) {
        for (std::size_t tags = 0; tags < frames.getTags().size(); ++tags) {
            ask(tags, destination);
        }
    }
}

PathComparison::Selection PathComparison::allPorts(RegisterPaths const& registers) {
    Selection all;
    for (auto const& [id, chip] : registers.getChips()) {
        all.emplace(id, ~PortSet{0});
    }
    return all;
}

void PathComparison::ask(std::size_t tags, std::size_t destination) {
    FrameKind const kind = _frames.getFrame(tags, destination);
    simulation::EthernetFrame const frame = RegisterPaths::frameOf(kind);
    for (auto const& [id, ports] : _selection) {
        auto const chip = _registers.getChips().find(id);
        if (chip == _registers.getChips().end() || _intent.getBoard().getSwitches().count(id) == 0) {
            continue;
        }
        for (unsigned port = 0; port < chip->second->getNumberOfPorts(); ++port) {
            if ((ports & bitOf(port)) == 0) {
                continue;
            }
            Case asked{tags,
                       destination,
                       id,
                       port,
                       kind,
                       _intent.ask(id, port, kind),
                       chip->second->decide(port, frame)};
            compare(asked);
            ++_questions;
        }
    }
}

void PathComparison::compare(Case& asked) {
    if (asked.decision.isRefused()) {
        _notModelled.insert(fmt::format("{}.{}: {}", asked.switchId, asked.port, asked.decision.notModelled));
        return;
    }
    asked.copies = RegisterPaths::copiesOf(asked.decision);
    followTrunks(asked);
    addPaths(asked);
    addLeaks(asked);
    addAmbiguous(asked);
    addForms(asked);
    addDoubled(asked);
    addMissing(asked);
}

// Of a trunk's members exactly one sends, whatever the addresses: which one, the chip may choose.
void PathComparison::followTrunks(Case& asked) const {
    for (PortSet const trunk : _intent.getBoard().getSwitches().at(asked.switchId).trunks) {
        PortSet const members = trunk & asked.wanted.allowed();
        if (!isOneOrNone(members)) {
            followFlows(asked, members);
        }
    }
}

void PathComparison::followFlows(Case& asked, PortSet members) const {
    simulation::ChipForwarding const& chip = *_registers.getChips().at(asked.switchId);
    bool isServed = true;
    for (unsigned flow = 0; flow < RegisterPaths::flows; ++flow) {
        PortSet sent = 0;
        for (auto copies :
             RegisterPaths::copiesOf(chip.decide(asked.port, RegisterPaths::frameOf(asked.frame, flow)))) {
            copies.ports &= members;
            sent |= copies.ports;
            RegisterPaths::add(asked.copies, copies);
        }
        asked.doubled |= isOneOrNone(sent) ? 0 : sent;
        isServed = isServed && sent != 0;
    }
    (isServed ? asked.spared : asked.unserved) |= members;
}

PathLine::Key PathComparison::keyOf(Case const& asked, PathLine::Kind kind) {
    PathLine::Key key;
    key.kind = kind;
    key.switchId = asked.switchId;
    return key;
}

void PathComparison::addPaths(Case const& asked) {
    PathLine::Key key = keyOf(asked, PathLine::Kind::path);
    key.vlan = asked.wanted.vlan;
    for (RegisterPaths::Copies const& copies : asked.copies) {
        PathLine::Form const form =
            key.vlan ? PathLine::Form{false, copies.tags} : PathLine::Form::of(copies.tags, asked.frame.tags);
        _paths.add(key, asked.tags, asked.destination, asked.port,
                   {form, copies.ports & _selection.at(asked.switchId)});
    }
}

void PathComparison::add(Case const& asked, PathLine::Key key, unsigned to, FrameKind::Tags const& tags) {
    if (PortSet const selected = bitOf(to) & _selection.at(asked.switchId)) {
        key.reason = _intent.explain(asked.switchId, asked.port, asked.frame, asked.wanted, to);
        key.rules = fmt::format("{}", fmt::join(asked.decision.rules, " "));
        _differences.add(key, asked.tags, asked.destination, asked.port,
                         {PathLine::Form::of(tags, asked.frame.tags), selected});
    }
}

void PathComparison::addLeaks(Case const& asked) {
    for (RegisterPaths::Copies const& copies : asked.copies) {
        forEachPort(copies.ports & ~asked.wanted.allowed(),
                    [&](unsigned to) { add(asked, keyOf(asked, PathLine::Kind::leak), to, copies.tags); });
    }
}

void PathComparison::addAmbiguous(Case const& asked) {
    for (RegisterPaths::Copies const& copies : asked.copies) {
        forEachPort(copies.ports & asked.wanted.may & ~asked.wanted.unfiltered, [&](unsigned to) {
            add(asked, keyOf(asked, PathLine::Kind::ambiguous), to, copies.tags);
        });
    }
}

// Where the document says two things, it asks for no form.
void PathComparison::addForms(Case const& asked) {
    PathLine::Key key = keyOf(asked, PathLine::Kind::form);
    for (RegisterPaths::Copies const& copies : asked.copies) {
        forEachPort(copies.ports & (asked.wanted.must | asked.wanted.unfiltered), [&](unsigned to) {
            FrameKind::Tags const wanted = asked.wanted.tagsAt(to, asked.frame.tags);
            if (copies.tags != wanted) {
                key.wanted = PathLine::Form::of(wanted, asked.frame.tags);
                add(asked, key, to, copies.tags);
            }
        });
    }
}

void PathComparison::addDoubled(Case const& asked) {
    forEachPort(asked.doubled, [&](unsigned to) {
        add(asked, keyOf(asked, PathLine::Kind::doubled), to, asked.wanted.tagsAt(to, asked.frame.tags));
    });
}

void PathComparison::addMissing(Case const& asked) {
    PortSet sent = 0;
    for (RegisterPaths::Copies const& copies : asked.copies) {
        sent |= copies.ports;
    }
    PortSet const missing = (~sent & ~asked.spared) | asked.unserved;
    forEachPort(asked.wanted.must & missing, [&](unsigned to) {
        add(asked, keyOf(asked, PathLine::Kind::missing), to, asked.wanted.tagsAt(to, asked.frame.tags));
    });
}

simulation::Decision PathComparison::getExample(PathLine const& line) const {
    unsigned port = 0;
    while ((line.from & bitOf(port)) == 0) {
        ++port;
    }
    AskedFrames::Destination const& destination = _frames.getDestinations()[line.destinations.front()];
    FrameKind const kind{line.frames.front(), destination.kind, destination.group};
    return _registers.getChips().at(line.key.switchId)->decide(port, RegisterPaths::frameOf(kind));
}

} // namespace board
