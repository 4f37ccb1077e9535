#include "board/trace/TraceClock.hpp"

#include <ctime>

#include "simulation/VirtualClock.hpp"

namespace board {

using simulation::VirtualClock;

TraceClock::TraceClock() : _start(now()) {}

std::uint64_t TraceClock::getNanoseconds() const {
    VirtualClock const* const simulated = VirtualClock::adopted();
    return simulated != nullptr ? simulated->getNanoseconds() : now() - _start;
}

std::uint64_t TraceClock::now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * simulation::VirtualClock::nanosecondsPerSecond +
           static_cast<std::uint64_t>(time.tv_nsec);
}

} // namespace board
