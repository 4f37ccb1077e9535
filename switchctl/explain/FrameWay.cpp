#include "switchctl/explain/FrameWay.hpp"

#include <algorithm>
#include <deque>
#include <map>
#include <tuple>

#include "chips/ToolError.hpp"

namespace switchctl::explain {

using board::ChipEvidence;
using board::FrameKind;
using board::RegisterPaths;
using chips::PortAddress;

namespace {

/// Keeps frames that go round from doing so for ever.
class Visited {
public:
    bool isNew(PortAddress const& at, FrameKind::Tags const& tags) {
        return _seen.emplace(at.switchId, at.portId, tags).second;
    }

private:
    std::set<std::tuple<unsigned, unsigned, FrameKind::Tags>> _seen;
};

} // namespace

FrameWay::FrameWay(simulation::SimulatedBoard& board, board::Intent const& intent,
                   board::Cables const& cables)
    : _board(board), _intent(intent), _cables(cables), _registers(RegisterPaths::chipsOf(board)) {}

void FrameWay::requirePort(PortAddress const& port) const {
    auto const chip = _registers.getChips().find(port.switchId);
    if (chip == _registers.getChips().end() || port.portId >= chip->second->getNumberOfPorts()) {
        throw chips::ToolError(chips::ExitStatus::usage, "the board has no port " + port.getText());
    }
}

simulation::Decision FrameWay::decide(PortAddress const& from, FrameKind const& frame) const {
    return _registers.getChips().at(from.switchId)->decide(from.portId, RegisterPaths::frameOf(frame));
}

void FrameWay::follow(PortAddress const& from, FrameQuestion const& question) {
    requirePort(from);
    if (!question.to) {
        return followAll(from, question.frame);
    }
    requirePort(*question.to);
    Route const delivered = findDelivery(from, question.frame, *question.to);
    followRoute(from, question.frame, delivered.empty() ? routeOf(from.switchId, *question.to) : delivered);
}

void FrameWay::followAll(PortAddress const& from, FrameKind const& frame) {
    Visited visited;
    visited.isNew(from, frame.tags);
    for (std::deque<Stage> next{{from, frame.tags, {}}}; !next.empty(); next.pop_front()) {
        FrameKind here = frame;
        here.tags = next.front().tags;
        PortAddress const at = next.front().at;
        add(at, std::nullopt, here);
        for (auto const& copy : _hops.back().explanation.getDecision().egress) {
            PortAddress const exit{at.switchId, copy.port};
            FrameKind::Tags const tags = RegisterPaths::tagsOf(copy.frame);
            auto const other = _cables.follow(exit);
            if (!other) {
                _deliveries.push_back({exit, tags});
            } else if (visited.isNew(*other, tags)) {
                next.push_back({*other, tags, {}});
            }
        }
    }
}

/// The ports by which the frame leaves one switch after the other until it leaves by the last; none when it
/// never does.
FrameWay::Route FrameWay::findDelivery(PortAddress const& from, FrameKind frame,
                                       PortAddress const& to) const {
    Visited visited;
    visited.isNew(from, frame.tags);
    for (std::deque<Stage> next{{from, frame.tags, {}}}; !next.empty(); next.pop_front()) {
        Stage const here = next.front();
        frame.tags = here.tags;
        for (auto const& copy : decide(here.at, frame).egress) {
            PortAddress const exit{here.at.switchId, copy.port};
            Route route = here.route;
            route.push_back(exit);
            if (exit.switchId == to.switchId && exit.portId == to.portId) {
                return route;
            }
            FrameKind::Tags const tags = RegisterPaths::tagsOf(copy.frame);
            auto const other = _cables.follow(exit);
            if (other && visited.isNew(*other, tags)) {
                next.push_back({*other, tags, route});
            }
        }
    }
    return {};
}

/// The same by the fewest cables, whether or not the frame takes them.
FrameWay::Route FrameWay::routeOf(unsigned from, PortAddress const& to) const {
    std::map<unsigned, Route> routes{{from, {}}};
    for (std::deque<unsigned> next{from}; !next.empty() && routes.count(to.switchId) == 0; next.pop_front()) {
        unsigned const here = next.front();
        for (unsigned port = 0; port < _registers.getChips().at(here)->getNumberOfPorts(); ++port) {
            auto const other = _cables.follow({here, port});
            if (other && routes.count(other->switchId) == 0) {
                routes[other->switchId] = routes.at(here);
                routes[other->switchId].push_back({here, port});
                next.push_back(other->switchId);
            }
        }
    }
    if (routes.count(to.switchId) == 0) {
        throw chips::ToolError(chips::ExitStatus::usage, "no --cable leads from switch " +
                                                             std::to_string(from) + " to switch " +
                                                             std::to_string(to.switchId));
    }
    Route route = routes.at(to.switchId);
    route.push_back(to);
    return route;
}

void FrameWay::followRoute(PortAddress const& from, FrameKind frame, Route const& exits) {
    PortAddress here = from;
    for (std::size_t index = 0; index < exits.size(); ++index) {
        PortAddress const& exit = exits[index];
        add(here, exit.portId, frame);
        auto const* const copy = _hops.back().explanation.getDecision().find(exit.portId);
        if (copy == nullptr) {
            return;
        }
        frame.tags = RegisterPaths::tagsOf(copy->frame);
        if (index + 1 == exits.size()) {
            _deliveries.push_back({exit, frame.tags});
        } else {
            here = _cables.follow(exit).value();
        }
    }
}

/// VLANs that either port is in.
std::vector<unsigned> FrameWay::vidsOf(PortAddress const& from, std::optional<unsigned> to) const {
    constexpr std::size_t most = 8;
    auto const& ports = _intent.getBoard().getSwitches().at(from.switchId).ports;
    std::set<unsigned> vids;
    for (unsigned const port : {from.portId, to.value_or(from.portId)}) {
        for (auto const& [vlan, membership] : ports.at(port).memberships) {
            vids.insert(vlan);
        }
    }
    std::vector<unsigned> list(vids.begin(), vids.end());
    list.resize(std::min(most, list.size()));
    return list;
}

void FrameWay::add(PortAddress const& from, std::optional<unsigned> to, FrameKind const& frame) {
    simulation::EthernetFrame const sent = RegisterPaths::frameOf(frame);
    simulation::Decision const decision = decide(from, frame);
    ChipEvidence::Question question;
    question.from = from.portId;
    question.to = to;
    question.vid = decision.vid.value_or(0);
    question.destination = sent.getDestination();
    question.vids = vidsOf(from, to);
    for (auto const& copy : decision.egress) {
        question.exits.push_back(copy.port);
    }
    if (to) {
        question.exits = {*to};
    }
    auto const evidence = ChipEvidence::of(
        _board, from.switchId, _intent.getBoard().getSwitches().at(from.switchId).model, question);
    _hops.push_back(
        {from, to, frame,
         board::PathExplanation(*_registers.getChips().at(from.switchId), *evidence, sent, from.portId, to),
         _intent.ask(from.switchId, from.portId, frame)});
}

} // namespace switchctl::explain
