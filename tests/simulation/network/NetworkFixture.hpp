#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/network/SimulatedNetwork.hpp"
#include "tests/simulation/network/FakeChip.hpp"

namespace simulation_test {

/// Three chips of four ports that flood, ids 0 to 2, with nothing plugged in.
class NetworkFixture : public testing::Test {
protected:
    using End = simulation::SimulatedNetwork::End;
    using Totals = simulation::SimulatedNetwork::Totals;

    /// What a station has got.
    struct Arrival {
        std::uint64_t nanoseconds;
        std::string at;
        simulation::EthernetFrame frame;

        bool operator==(Arrival const& other) const {
            return nanoseconds == other.nanoseconds && at == other.at && frame == other.frame;
        }
    };

    /// A broadcast of 64 bytes on the wire; frames of different numbers differ.
    static simulation::EthernetFrame broadcast(unsigned number = 0) {
        return simulation::EthernetFrame::make(0xFFFFFFFFFFFF, 0x020000000001, 0x0800,
                                               {static_cast<std::uint8_t>(number)});
    }

    void attach(End const& end) {
        _network.attach(end, [this, end](simulation::EthernetFrame const& frame) {
            _arrivals.push_back({_services.clock.getNanoseconds(), end.describe(), frame});
        });
    }

    void expectNothingLost() const {
        Totals const totals = _network.getTotals();
        EXPECT_EQ(totals.copies,
                  totals.crossed + totals.delivered + totals.unconnected + totals.cut + totals.stopped);
    }

    simulation::Services _services;
    FakeChip _zero{_services};
    FakeChip _one{_services};
    FakeChip _two{_services};
    simulation::SimulatedNetwork _network{_services.clock, {{0, &_zero}, {1, &_one}, {2, &_two}}};
    std::vector<Arrival> _arrivals;
};

} // namespace simulation_test
