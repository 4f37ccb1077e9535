#include "simulation/FaultyBus.hpp"

namespace simulation {

namespace {

thread_local unsigned accessesInProgress = 0;

/// Counts the accesses that this thread is in the middle of, for isInAccess().
class AccessScope {
public:
    AccessScope() { ++accessesInProgress; }
    ~AccessScope() { --accessesInProgress; }
    AccessScope(AccessScope const&) = delete;
    AccessScope& operator=(AccessScope const&) = delete;
};

} // namespace

bool BusFaults::isInAccess() {
    return accessesInProgress > 0;
}

FaultyBus::FaultyBus(BusFaults& faults, unsigned physicalAddress, BusDevice& device)
    : _faults(faults), _physicalAddress(physicalAddress), _device(device) {}

bool FaultyBus::read(unsigned offset, unsigned& value) {
    AccessScope const scope;
    std::lock_guard<std::recursive_mutex> const lock(_faults._services.mutex);
    BusFaults::Strike const* const strike = _faults.begin();
    bool const fails = strike != nullptr && strike->kind == BusFaults::Kind::accessFails;
    bool const answered = !fails && _device.read(offset, value);
    if (answered && strike != nullptr) {
        value = BusFaults::disturbed(value, *strike);
    }
    _faults.note({_physicalAddress + offset, false, answered ? value : 0});
    return answered;
}

bool FaultyBus::write(unsigned offset, unsigned value) {
    AccessScope const scope;
    std::lock_guard<std::recursive_mutex> const lock(_faults._services.mutex);
    BusFaults::Strike const* const strike = _faults.begin();
    _faults.note({_physicalAddress + offset, true, value});
    if (strike == nullptr) {
        return _device.write(offset, value);
    }
    return strike->kind != BusFaults::Kind::accessFails &&
           _device.write(offset, BusFaults::disturbed(value, *strike));
}

} // namespace simulation
