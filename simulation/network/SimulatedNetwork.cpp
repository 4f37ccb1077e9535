#include "simulation/network/SimulatedNetwork.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <stdexcept>

#include "simulation/SimulatedBoard.hpp"

namespace simulation {

namespace {

using NetworkLock = std::lock_guard<std::mutex>;

constexpr std::uint64_t bitsPerByte = 8;
constexpr std::uint64_t nanosecondsPerBitOfOneMegabit = 1000;

SimulatedNetwork::Chips chipsOf(SimulatedBoard& board) {
    SimulatedNetwork::Chips chips;
    for (unsigned const id : board.getSwitchIds()) {
        chips.emplace(id, &board.getChip(id));
    }
    return chips;
}

// The cables of the cycle that `way` ends with, newest last; of a way without one, all.
template <typename Way> std::string describeCycle(Way const* way) {
    std::vector<std::string> cables;
    std::vector<SimulatedNetwork::End> entered;
    for (; way != nullptr; way = way->before.get()) {
        auto const again = std::find(entered.begin(), entered.end(), way->to);
        if (again != entered.end()) {
            cables.erase(cables.begin(), cables.begin() + (again - entered.begin()));
            break;
        }
        entered.push_back(way->to);
        cables.push_back(fmt::format("{} to {}", way->from.describe(), way->to.describe()));
    }
    return fmt::format("{}", fmt::join(cables.rbegin(), cables.rend(), ", "));
}

} // namespace

std::string SimulatedNetwork::End::describe() const {
    return fmt::format("{}.{}", switchId, port);
}

SimulatedNetwork::SimulatedNetwork(SimulatedBoard& board)
    : SimulatedNetwork(board.getClock(), chipsOf(board)) {}

SimulatedNetwork::SimulatedNetwork(VirtualClock& clock, Chips chips)
    : _clock(clock), _chips(std::move(chips)) {}

void SimulatedNetwork::connect(End const& one, End const& other, unsigned megabits) {
    ChipTestSide& chipOfOne = getChip(one);
    ChipTestSide& chipOfOther = getChip(other);
    {
        NetworkLock const lock(_mutex);
        occupy(one, {_cables, other, nullptr});
        try {
            occupy(other, {_cables, one, nullptr});
        } catch (std::invalid_argument const&) {
            _sockets.erase(one);
            throw;
        }
        ++_cables;
    }
    chipOfOne.plugLink(one.port, megabits);
    chipOfOther.plugLink(other.port, megabits);
}

void SimulatedNetwork::attach(End const& end, Station station, unsigned megabits) {
    ChipTestSide& chip = getChip(end);
    {
        NetworkLock const lock(_mutex);
        occupy(end, {_cables, std::nullopt, std::make_shared<Station const>(std::move(station))});
        ++_cables;
    }
    chip.plugLink(end.port, megabits);
}

bool SimulatedNetwork::unplug(End const& end) {
    std::vector<End> ends;
    {
        NetworkLock const lock(_mutex);
        auto const found = _sockets.find(end);
        if (found == _sockets.end()) {
            return false;
        }
        ends.push_back(end);
        if (found->second.other) {
            ends.push_back(*found->second.other);
        }
        for (End const& each : ends) {
            _sockets.erase(each);
        }
    }
    for (End const& each : ends) {
        getChip(each).unplugLink(each.port);
    }
    return true;
}

void SimulatedNetwork::inject(End const& at, EthernetFrame frame) {
    getChip(at);
    NetworkLock const lock(_mutex);
    ++_totals.injected;
    _underWay.emplace(_clock.getNanoseconds(),
                      Copy{std::make_shared<Injection>(), std::move(frame), at, {}, {}});
}

void SimulatedNetwork::run() {
    NetworkLock const running(_running);
    while (auto const next = takeNext()) {
        carry(next->first, next->second);
    }
}

void SimulatedNetwork::observe(Observer observer) {
    auto shared = observer ? std::make_shared<Observer const>(std::move(observer)) : nullptr;
    NetworkLock const lock(_mutex);
    _observer = std::move(shared);
}

SimulatedNetwork::Totals SimulatedNetwork::getTotals() const {
    NetworkLock const lock(_mutex);
    return _totals;
}

std::vector<std::string> SimulatedNetwork::getFindings() const {
    NetworkLock const lock(_mutex);
    return _findings;
}

ChipTestSide& SimulatedNetwork::getChip(End const& end) const {
    auto const found = _chips.find(end.switchId);
    if (found == _chips.end()) {
        throw std::out_of_range("the board has no switch " + std::to_string(end.switchId));
    }
    ChipForwarding const* const forwarding = found->second->getForwarding();
    if (forwarding != nullptr && end.port >= forwarding->getNumberOfPorts()) {
        throw std::out_of_range("there is no port " + end.describe());
    }
    return *found->second;
}

void SimulatedNetwork::occupy(End const& end, Socket const& socket) {
    if (!_sockets.emplace(end, socket).second) {
        throw std::invalid_argument("something is plugged in at " + end.describe());
    }
}

std::optional<std::pair<std::uint64_t, SimulatedNetwork::Copy>> SimulatedNetwork::takeNext() {
    NetworkLock const lock(_mutex);
    if (_underWay.empty()) {
        return std::nullopt;
    }
    auto const next = _underWay.extract(_underWay.begin());
    return std::pair(next.key(), next.mapped());
}

void SimulatedNetwork::carry(std::uint64_t time, Copy const& copy) {
    std::uint64_t const now = _clock.getNanoseconds();
    if (now < time) {
        _clock.advanceNanoseconds(time - now);
    }
    std::shared_ptr<Station const> station;
    {
        NetworkLock const lock(_mutex);
        if (!arrives(copy)) {
            return;
        }
        station = copy.cable ? _sockets[copy.at].station : nullptr;
        if (station != nullptr) {
            ++_totals.delivered;
        } else if (copy.cable) {
            ++_totals.crossed;
        }
    }
    if (station != nullptr) {
        (*station)(copy.frame);
    } else {
        enterChip(time, copy);
    }
}

bool SimulatedNetwork::arrives(Copy const& copy) {
    if (!copy.cable) {
        return true;
    }
    auto const socket = _sockets.find(copy.at);
    if (socket == _sockets.end() || socket->second.cable != *copy.cable) {
        ++_totals.cut;
        return false;
    }
    if (isStopped(copy)) {
        ++_totals.stopped;
        return false;
    }
    return true;
}

bool SimulatedNetwork::isStopped(Copy const& copy) {
    Injection& injection = *copy.injection;
    if (!injection.isStopped && ++injection.copies[copy.at] > mostCopies) {
        injection.isStopped = true;
        report(fmt::format("storm at {}: more than {} copies of one frame ({}) by way of {}",
                           copy.at.describe(), mostCopies, copy.frame.describe(),
                           describeCycle(copy.way.get())));
    }
    return injection.isStopped;
}

void SimulatedNetwork::enterChip(std::uint64_t time, Copy const& copy) {
    ChipForwarding* const forwarding = getChip(copy.at).getForwarding();
    if (forwarding == nullptr) {
        NetworkLock const lock(_mutex);
        ++_totals.dropped;
        return report(fmt::format("switch {}: its model does not forward frames", copy.at.switchId));
    }
    forwarding->receive(copy.at.port, copy.frame, _decision);
    Decision const& decision = _decision;
    std::vector<unsigned> megabits;
    for (Decision::Egress const& egress : decision.egress) {
        megabits.push_back(forwarding->getMegabits(egress.port));
    }
    std::shared_ptr<Observer const> observer;
    {
        NetworkLock const lock(_mutex);
        observer = _observer;
        _totals.dropped += decision.isDropped() ? 1 : 0;
        _totals.toProcessor += decision.toProcessor ? 1 : 0;
        if (decision.isRefused()) {
            report(copy.at.describe() + ": not modelled: " + decision.notModelled);
        }
        for (std::size_t i = 0; i < decision.egress.size(); ++i) {
            send(time + chipNanoseconds, copy, decision.egress[i], megabits[i]);
        }
    }
    if (observer != nullptr) {
        (*observer)(copy.at, copy.frame, decision);
    }
}

void SimulatedNetwork::send(std::uint64_t time, Copy const& origin, Decision::Egress const& egress,
                            unsigned megabits) {
    ++_totals.copies;
    End const from{origin.at.switchId, egress.port};
    auto const socket = _sockets.find(from);
    if (socket == _sockets.end() || megabits == 0) {
        ++_totals.unconnected;
        return;
    }
    std::uint64_t& sendingUntil = _sendingUntil[from];
    sendingUntil = std::max(sendingUntil, time) + (overheadLength + egress.frame.getWireLength()) *
                                                      bitsPerByte * nanosecondsPerBitOfOneMegabit / megabits;
    Copy copy{origin.injection, egress.frame, from, origin.way, socket->second.cable};
    if (socket->second.other) {
        copy.at = *socket->second.other;
        copy.way = std::make_shared<Way const>(Way{from, copy.at, origin.way});
    }
    _underWay.emplace(sendingUntil, std::move(copy));
}

void SimulatedNetwork::report(std::string const& finding) {
    if (std::find(_findings.begin(), _findings.end(), finding) == _findings.end()) {
        _findings.push_back(finding);
    }
}

} // namespace simulation
