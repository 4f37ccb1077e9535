#include "simulation/VirtualClock.hpp"

#include <atomic>

namespace simulation {

namespace {

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

} // namespace

struct VirtualClock::Implementation {
    std::atomic<std::uint64_t> nanoseconds{0};
    std::atomic<std::uint64_t> phase{0};
};

VirtualClock::VirtualClock() : _implementation(std::make_unique<Implementation>()) {}

VirtualClock::~VirtualClock() {
    if (adopted() == this) {
        adopt(nullptr);
    }
}

void VirtualClock::advanceNanoseconds(std::uint64_t nanoseconds) {
    _implementation->nanoseconds += nanoseconds;
}

std::uint64_t VirtualClock::getNanoseconds() const {
    return _implementation->nanoseconds;
}

std::int64_t VirtualClock::getWallClockSeconds() const {
    std::uint64_t const sinceEpoch = _implementation->phase + _implementation->nanoseconds;
    return epochSeconds + static_cast<std::int64_t>(sinceEpoch / nanosecondsPerSecond);
}

void VirtualClock::setWallClockPhase(std::uint64_t nanoseconds) {
    _implementation->phase = nanoseconds % nanosecondsPerSecond;
}

} // namespace simulation
