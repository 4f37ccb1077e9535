#pragma once

#include <map>

#include "board/paths/RegisterPaths.hpp"
#include "simulation/network/ChipForwarding.hpp"
#include "simulation/network/SimulatedNetwork.hpp"

namespace board_test {

/// Stations at all ports of a board: what they get when frames are really sent, and what registers say that
/// they get.
class SentFrames {
public:
    using End = simulation::SimulatedNetwork::End;
    using Arrivals = std::multimap<End, board::FrameKind::Tags>;

    /// Both must outlive the object.
    SentFrames(simulation::SimulatedBoard& board, board::RegisterPaths const& registers)
        : _registers(registers), _network(board) {
        for (auto const& [id, chip] : registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                End const end{id, port};
                _network.attach(end, [this, end](simulation::EthernetFrame const& frame) {
                    _arrivals.emplace(end, board::RegisterPaths::tagsOf(frame));
                });
            }
        }
    }

    Arrivals send(End const& from, simulation::EthernetFrame const& frame) {
        _arrivals.clear();
        _network.inject(from, frame);
        _network.run();
        return _arrivals;
    }

    Arrivals predict(End const& from, simulation::EthernetFrame const& frame) const {
        Arrivals arrivals;
        auto const decision = _registers.getChips().at(from.switchId)->decide(from.port, frame);
        for (board::RegisterPaths::Copies const& copies : board::RegisterPaths::copiesOf(decision)) {
            for (unsigned port = 0; copies.ports >> port != 0; ++port) {
                if ((copies.ports >> port & 1U) != 0) {
                    arrivals.emplace(End{from.switchId, port}, copies.tags);
                }
            }
        }
        return arrivals;
    }

private:
    board::RegisterPaths const& _registers;
    simulation::SimulatedNetwork _network;
    Arrivals _arrivals;
};

} // namespace board_test
