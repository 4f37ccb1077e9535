#pragma once

namespace simulation {
class VirtualClock;
}

namespace board {

/// Has the thread that constructs it live by a virtual clock until it is destroyed, on the same
/// thread.
class ClockAdoption {
public:
    explicit ClockAdoption(simulation::VirtualClock& clock);
    ~ClockAdoption();
    ClockAdoption(ClockAdoption const&) = delete;
    ClockAdoption& operator=(ClockAdoption const&) = delete;

private:
    simulation::VirtualClock* _before;
};

} // namespace board
