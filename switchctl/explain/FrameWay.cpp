#include "switchctl/explain/FrameWay.hpp"

#include <algorithm>
#include <deque>
#include <map>
#include <set>

#include "chips/ToolError.hpp"

namespace switchctl::explain {

using board::ChipEvidence;
using board::FrameKind;
using chips::PortAddress;

FrameWay::FrameWay(board::ModelBringUp& bringUp, board::Intent const& intent, board::Cables const& cables)
    : _bringUp(bringUp),
      _intent(intent),
      _cables(cables),
      _registers(board::RegisterPaths::chipsOf(bringUp.getBoard())) {}

void FrameWay::requirePort(PortAddress const& port) const {
    auto const chip = _registers.getChips().find(port.switchId);
    if (chip == _registers.getChips().end() || port.portId >= chip->second->getNumberOfPorts()) {
        throw chips::ToolError(chips::ExitStatus::usage, "the board has no port " + port.getText());
    }
}

/// The ports by which a frame leaves one switch after the other: the fewest cables.
std::vector<PortAddress> FrameWay::routeOf(unsigned from, unsigned to) const {
    std::map<unsigned, std::vector<PortAddress>> routes{{from, {}}};
    for (std::deque<unsigned> next{from}; !next.empty() && routes.count(to) == 0; next.pop_front()) {
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
    if (routes.count(to) == 0) {
        throw chips::ToolError(chips::ExitStatus::usage, "no --cable leads from switch " +
                                                             std::to_string(from) + " to switch " +
                                                             std::to_string(to));
    }
    return routes.at(to);
}

void FrameWay::follow(PortAddress const& from, FrameQuestion const& question) {
    requirePort(from);
    if (!question.to) {
        return add(from, std::nullopt, question.frame);
    }
    requirePort(*question.to);
    PortAddress here = from;
    FrameKind frame = question.frame;
    std::vector<PortAddress> exits = routeOf(from.switchId, question.to->switchId);
    exits.push_back(*question.to);
    for (PortAddress const& exit : exits) {
        add(here, exit.portId, frame);
        auto const* const copy = _hops.back().explanation.getDecision().find(exit.portId);
        auto const other = _cables.follow(exit);
        if (copy == nullptr || !other) {
            return;
        }
        here = *other;
        frame.tags = board::RegisterPaths::tagsOf(copy->frame);
    }
}

/// VLANs that either port is in.
std::vector<unsigned> FrameWay::vidsOf(PortAddress const& from, unsigned to) const {
    constexpr std::size_t most = 8;
    auto const& ports = _intent.getBoard().getSwitches().at(from.switchId).ports;
    std::set<unsigned> vids;
    for (unsigned const port : {from.portId, to}) {
        for (auto const& [vlan, membership] : ports.at(port).memberships) {
            vids.insert(vlan);
        }
    }
    return {vids.begin(), std::next(vids.begin(), static_cast<int>(std::min(most, vids.size())))};
}

void FrameWay::add(PortAddress const& from, std::optional<unsigned> to, FrameKind const& frame) {
    simulation::ChipForwarding const& chip = *_registers.getChips().at(from.switchId);
    simulation::EthernetFrame const sent = board::RegisterPaths::frameOf(frame);
    simulation::Decision const decision = chip.decide(from.portId, sent);
    unsigned const any = decision.egress.empty() ? from.portId : decision.egress.front().port;
    unsigned const exit = to.value_or(any);
    ChipEvidence::Question const question{from.portId, exit, decision.vid.value_or(0), vidsOf(from, exit)};
    auto const evidence =
        ChipEvidence::of(_bringUp.getBoard(), from.switchId, _bringUp.getModel(from.switchId), question);
    _hops.push_back({from, to, frame, board::PathExplanation(chip, *evidence, sent, from.portId, exit),
                     _intent.ask(from.switchId, from.portId, frame)});
}

bool FrameWay::isDelivered() const {
    Hop const& last = _hops.back();
    return last.to ? last.explanation.isDelivered() : !last.explanation.getDecision().isDropped();
}

} // namespace switchctl::explain
