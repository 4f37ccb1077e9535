#include "switchctl/ClockAdoption.hpp"

#include "simulation/VirtualClock.hpp"

namespace switchctl {

ClockAdoption::ClockAdoption(simulation::VirtualClock& clock) : _before(simulation::VirtualClock::adopted()) {
    simulation::VirtualClock::adopt(&clock);
}

ClockAdoption::~ClockAdoption() {
    simulation::VirtualClock::adopt(_before);
}

} // namespace switchctl
