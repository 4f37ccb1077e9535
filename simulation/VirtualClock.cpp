#include "simulation/VirtualClock.hpp"

#include <atomic>
#include <limits>
#include <map>
#include <mutex>
#include <utility>

namespace simulation {

namespace {

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

} // namespace

struct VirtualClock::Implementation {
    std::atomic<std::uint64_t> nanoseconds{0};
    std::atomic<std::uint64_t> phase{0};
    std::atomic<std::uint64_t> nextAlarm{never};
    std::multimap<std::uint64_t, std::function<void()>> alarms;
    std::mutex mutex;

    void callDueAlarms();
    std::function<void()> takeDueAlarm();
};

void VirtualClock::Implementation::callDueAlarms() {
    while (nanoseconds >= nextAlarm) {
        if (std::function<void()> const alarm = takeDueAlarm()) {
            alarm();
        }
    }
}

std::function<void()> VirtualClock::Implementation::takeDueAlarm() {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const first = alarms.begin();
    if (first == alarms.end() || first->first > nanoseconds) {
        return nullptr;
    }
    std::function<void()> alarm = std::move(first->second);
    alarms.erase(first);
    nextAlarm = alarms.empty() ? never : alarms.begin()->first;
    return alarm;
}

VirtualClock::VirtualClock() : _implementation(std::make_unique<Implementation>()) {}

VirtualClock::~VirtualClock() {
    if (adopted() == this) {
        adopt(nullptr);
    }
}

void VirtualClock::advanceNanoseconds(std::uint64_t nanoseconds) {
    _implementation->nanoseconds += nanoseconds;
    _implementation->callDueAlarms();
}

void VirtualClock::callAt(std::uint64_t nanoseconds, std::function<void()> alarm) {
    std::lock_guard<std::mutex> const lock(_implementation->mutex);
    _implementation->alarms.emplace(nanoseconds, std::move(alarm));
    _implementation->nextAlarm = _implementation->alarms.begin()->first;
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
