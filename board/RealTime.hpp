#pragma once

#include "simulation/VirtualClock.hpp"

namespace board {

/// Puts the thread back on the machine's clock for a while. Who talks to another thread over a line
/// must not wait in simulated time.
class RealTime {
public:
    RealTime() : _before(simulation::VirtualClock::adopted()) { simulation::VirtualClock::adopt(nullptr); }
    ~RealTime() { simulation::VirtualClock::adopt(_before); }
    RealTime(RealTime const&) = delete;
    RealTime& operator=(RealTime const&) = delete;

private:
    simulation::VirtualClock* _before;
};

} // namespace board
