#include "board/ClockAdoption.hpp"

#include "simulation/VirtualClock.hpp"

namespace board {

ClockAdoption::ClockAdoption(simulation::VirtualClock& clock) : _before(simulation::VirtualClock::adopted()) {
    simulation::VirtualClock::adopt(&clock);
}

ClockAdoption::~ClockAdoption() {
    simulation::VirtualClock::adopt(_before);
}

} // namespace board
