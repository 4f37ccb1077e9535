#include "board/paths/StationComparison.hpp"

#include <tuple>

#include "simulation/network/ChipForwarding.hpp"

namespace board {

namespace {

bool hasSeveral(PortSet ports) {
    return (ports & (ports - 1)) != 0;
}

unsigned lowest(PortSet ports) {
    unsigned port = 0;
    while ((ports >> port & 1U) == 0) {
        ++port;
    }
    return port;
}

} // namespace

StationComparison::StationComparison(Intent const& intent, RegisterPaths const& registers,
                                     AskedFrames const& frames, Cables const& cables,
                                     Selection const& selection)
    : _intent(intent), _registers(registers), _frames(frames), _cables(cables), _selection(selection) {
    for (std::size_t destination = 0; destination < frames.getDestinations().size(); ++destination) {
        for (std::size_t tags = 0; tags < frames.getTags().size(); ++tags) {
            ask(tags, destination);
        }
    }
}

bool StationComparison::isSelected(Place const& port) const {
    auto const ports = _selection.find(port.first);
    return ports != _selection.end() && (ports->second >> port.second & 1U) != 0;
}

void StationComparison::ask(std::size_t tags, std::size_t destination) {
    FrameKind const kind = _frames.getFrame(tags, destination);
    auto const withTags = [&kind](FrameKind::Tags const& other) {
        FrameKind changed = kind;
        changed.tags = other;
        return changed;
    };
    CableWalk const wanted(
        _cables, [&](Place const& at, auto const& other) { return stepOfIntent(at, withTags(other)); });
    std::map<FrameKind::Tags, simulation::EthernetFrame> frames;
    CableWalk const found(_cables, [&](Place const& at, auto const& other) {
        auto frame = frames.find(other);
        if (frame == frames.end()) {
            frame = frames.emplace(other, RegisterPaths::frameOf(withTags(other))).first;
        }
        return stepOfRegisters(at, frame->second);
    });
    for (auto const& [id, chip] : _registers.getChips()) {
        if (_cables.getPorts(id) == 0) {
            continue;
        }
        for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
            if (isSelected({id, port}) && !_cables.follow({id, port})) {
                Place const from(id, port);
                compare({tags, destination, from, wanted.run(from, kind.tags), found.run(from, kind.tags)});
            }
        }
    }
}

std::vector<CableWalk::Copies> StationComparison::stepOfIntent(Place const& at, FrameKind const& kind) const {
    auto const owner = _intent.getBoard().getSwitches().find(at.first);
    if (owner == _intent.getBoard().getSwitches().end()) {
        return {};
    }
    Intent::Answer const answer = _intent.ask(at.first, at.second, kind);
    // Which member of a trunk sends, nobody says; a station at one may get the frame, or not.
    PortSet uncertain = answer.may;
    for (PortSet const trunk : owner->second.trunks) {
        uncertain |= hasSeveral(trunk & answer.allowed()) ? trunk & ~_cables.getPorts(at.first) : 0;
    }
    std::vector<CableWalk::Copies> copies;
    for (PortSet const ports : {answer.untagged, answer.tagged, ~(answer.untagged | answer.tagged)}) {
        for (bool const isCertain : {true, false}) {
            PortSet const sending = ports & answer.allowed() & (isCertain ? ~uncertain : uncertain);
            if (sending != 0) {
                copies.push_back({answer.tagsAt(lowest(sending), kind.tags), sending, isCertain});
            }
        }
    }
    return copies;
}

std::vector<CableWalk::Copies>
StationComparison::stepOfRegisters(Place const& at, simulation::EthernetFrame const& frame) const {
    std::vector<CableWalk::Copies> copies;
    auto const chip = _registers.getChips().find(at.first);
    if (chip != _registers.getChips().end()) {
        for (auto const& sent : RegisterPaths::copiesOf(chip->second->decide(at.second, frame))) {
            copies.push_back({sent.tags, sent.ports, true});
        }
    }
    return copies;
}

void StationComparison::compare(Case const& asked) {
    FrameKind::Tags const& received = _frames.getTags()[asked.tags];
    Reach paths;
    Reach leaks;
    Reach forms;
    Reach missing;
    for (auto const& [at, tagsThere] : asked.found.arrivals) {
        auto const wanted = asked.wanted.arrivals.find(at);
        for (auto const& [tags, isCertain] : tagsThere) {
            PathLine::Form const form = PathLine::Form::of(tags, received);
            paths[form].push_back(at);
            if (wanted == asked.wanted.arrivals.end()) {
                leaks[form].push_back(at);
            } else if (wanted->second.count(tags) == 0) {
                forms[form].push_back(at);
            }
        }
    }
    for (auto const& [at, tagsThere] : asked.wanted.arrivals) {
        for (auto const& [tags, isCertain] : tagsThere) {
            if (isCertain && asked.found.arrivals.count(at) == 0) {
                missing[PathLine::Form::of(tags, received)].push_back(at);
            }
        }
    }
    add(asked, Kind::path, paths);
    add(asked, Kind::leak, leaks);
    add(asked, Kind::form, forms);
    add(asked, Kind::missing, missing);
    if (!asked.found.loop.empty()) {
        _facts[{Kind::loop, {asked.from, {{PathLine::Form(), asked.found.loop}}}}][asked.destination]
            .push_back(asked.tags);
    }
}

void StationComparison::add(Case const& asked, Kind kind, Reach reach) {
    Reach selected;
    for (auto const& [form, ports] : reach) {
        for (Place const& port : ports) {
            if (isSelected(port)) {
                selected[form].push_back(port);
            }
        }
    }
    if (!selected.empty()) {
        _facts[{kind, {asked.from, selected}}][asked.destination].push_back(asked.tags);
    }
}

std::vector<StationComparison::Line> StationComparison::getLines() const {
    using Same = std::tuple<Kind, std::vector<std::size_t>, std::vector<std::size_t>, Reach>;
    std::map<Same, std::vector<Place>> senders;
    for (auto const& [fact, frames] : _facts) {
        std::map<std::vector<std::size_t>, std::vector<std::size_t>> destinationsByTags;
        for (auto const& [destination, tags] : frames) {
            destinationsByTags[tags].push_back(destination);
        }
        for (auto const& [tags, destinations] : destinationsByTags) {
            senders[{fact.first, tags, destinations, fact.second.second}].push_back(fact.second.first);
        }
    }
    std::vector<Line> lines;
    for (auto const& [same, from] : senders) {
        auto const& [kind, tags, destinations, reach] = same;
        Line line{kind, from, {}, destinations, reach};
        for (std::size_t const index : tags) {
            line.frames.push_back(_frames.getTags()[index]);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace board
