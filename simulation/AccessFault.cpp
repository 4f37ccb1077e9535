#include "simulation/AccessFault.hpp"

namespace simulation {

AccessFault::AccessFault(VirtualClock const& clock) : _clock(clock) {}

void AccessFault::arm(unsigned nth) {
    _remaining = nth;
    _isPolled = false;
}

void AccessFault::accessStarted() {
    if (_remaining > 0) {
        --_remaining;
    }
}

bool AccessFault::isBusy() {
    if (_remaining != 1) {
        return false;
    }
    if (!_isPolled) {
        _isPolled = true;
        _busyUntil = _clock.getNanoseconds() + busyNanoseconds;
    }
    if (_clock.getNanoseconds() < _busyUntil) {
        return true;
    }
    arm(0);
    return false;
}

} // namespace simulation
