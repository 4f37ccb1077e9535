#include "simulation/BusFaults.hpp"

#include <utility>

namespace simulation {

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

constexpr std::uint32_t allBits = 0xFFFFFFFF;

} // namespace

BusFaults::BusFaults(Services& services) : _services(services) {}

void BusFaults::strike(std::uint64_t access, Kind kind, unsigned bit) {
    Lock const lock(_services.mutex);
    _strikes[access] = {kind, bit};
}

void BusFaults::strikeFrom(std::uint64_t access, Kind kind) {
    Lock const lock(_services.mutex);
    _breakdown = access;
    _afterBreakdown = {kind, 0};
}

void BusFaults::callBefore(std::uint64_t access, std::function<void()> action) {
    Lock const lock(_services.mutex);
    _actions.emplace(access, std::move(action));
}

void BusFaults::slowDown(std::uint64_t nanoseconds) {
    Lock const lock(_services.mutex);
    _slowness = nanoseconds;
}

void BusFaults::startRecord() {
    Lock const lock(_services.mutex);
    _isRecording = true;
}

std::vector<BusFaults::Access> BusFaults::getRecord() const {
    Lock const lock(_services.mutex);
    return _record;
}

std::uint64_t BusFaults::getAccesses() const {
    Lock const lock(_services.mutex);
    return _accesses;
}

BusFaults::Strike const* BusFaults::begin() {
    ++_accesses;
    // An action may ask for further ones, for later accesses.
    for (auto due = _actions.find(_accesses); due != _actions.end(); due = _actions.find(_accesses)) {
        std::function<void()> const action = std::move(due->second);
        _actions.erase(due);
        action();
    }
    if (_slowness > 0) {
        _services.clock.advanceNanoseconds(_slowness);
    }
    auto const found = _strikes.find(_accesses);
    if (found != _strikes.end()) {
        return &found->second;
    }
    return _accesses >= _breakdown ? &_afterBreakdown : nullptr;
}

void BusFaults::note(Access const& access) {
    if (_isRecording) {
        _record.push_back(access);
    }
}

std::uint32_t BusFaults::disturbed(std::uint32_t value, Strike const& strike) {
    switch (strike.kind) {
    case Kind::allZeros:
        return 0;
    case Kind::allOnes:
        return allBits;
    case Kind::bitFlipped:
        return value ^ (std::uint32_t{1} << strike.bit);
    case Kind::accessFails:
        break;
    }
    return value;
}

} // namespace simulation
