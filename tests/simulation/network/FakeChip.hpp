#pragma once

#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "simulation/ChipTestSide.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace simulation_test {

/// What has to be there before the test side that looks at it.
struct NoUnits {
    simulation::UnitDirectory _units;
};

/// A chip without registers that sends each frame, as it is, out of all other ports, unless told otherwise.
class FakeChip final : private NoUnits, public simulation::ChipTestSide, public simulation::ChipForwarding {
public:
    explicit FakeChip(simulation::Services& services, unsigned numberOfPorts = 4)
        : ChipTestSide(services, NoUnits::_units, {}),
          ChipForwarding(services),
          _numberOfPorts(numberOfPorts) {}

    unsigned getNumberOfPorts() const override { return _numberOfPorts; }
    simulation::ChipForwarding* getForwarding() override { return _forwards ? this : nullptr; }
    void failAccess(unsigned /*nth*/) override {}
    void plugLink(unsigned number, unsigned /*megabits*/, bool /*fullDuplex*/) override {
        _linked.insert(number);
    }
    void unplugLink(unsigned number) override { _linked.erase(number); }

    std::set<unsigned> _linked;
    /// Of all ports.
    unsigned _megabits = 1000;
    bool _forwards = true;
    /// Replaces flooding; with the board's mutex held.
    std::function<simulation::Decision(unsigned port, simulation::EthernetFrame const& frame)> _decide;

private:
    void doReceive(unsigned port, simulation::EthernetFrame const& frame,
                   simulation::Decision& decision) override {
        doDecide(port, frame, everyPort, decision);
    }
    void doDecide(unsigned port, simulation::EthernetFrame const& frame, std::uint32_t /*among*/,
                  simulation::Decision& decision) const override {
        if (_decide) {
            decision = _decide(port, frame);
            return;
        }
        for (unsigned each = 0; each < _numberOfPorts; ++each) {
            if (each != port) {
                decision.egress.push_back({each, simulation::Decision::Form::asReceived, frame});
            }
        }
    }
    bool doHasLink(unsigned port) const override { return _linked.count(port) != 0; }
    unsigned doGetMegabits(unsigned /*port*/) const override { return _megabits; }

    unsigned _numberOfPorts;
};

} // namespace simulation_test
