#pragma once

#include "simulation/VirtualClock.hpp"

namespace board {

/// Has the thread that constructs it live by another clock until it is destroyed, on the same thread.
class ClockAdoption {
public:
    explicit ClockAdoption(simulation::VirtualClock& clock) : ClockAdoption(&clock) {}

    /// \param clock null for the machine's: who talks to another thread over a line must not wait in
    ///        simulated time.
    explicit ClockAdoption(simulation::VirtualClock* clock) : _before(simulation::VirtualClock::adopted()) {
        simulation::VirtualClock::adopt(clock);
    }
    ~ClockAdoption() { simulation::VirtualClock::adopt(_before); }
    ClockAdoption(ClockAdoption const&) = delete;
    ClockAdoption& operator=(ClockAdoption const&) = delete;

private:
    simulation::VirtualClock* _before;
};

} // namespace board
