#pragma once

#include <cstdint>

#include "simulation/VirtualClock.hpp"

namespace simulation {

/// Makes one access of a chip fail that a driver only starts when the chip is not busy: the chip
/// then shows busy until a driver that waits for a second has given up.
class AccessFault {
public:
    /// The second that drivers wait, and more than one poll on top.
    static constexpr std::uint64_t busyNanoseconds = 1'010'000'000;

    /// `clock` must outlive the fault.
    explicit AccessFault(VirtualClock const& clock);

    /// The access that fails, 1 = the next; 0 = none.
    void arm(unsigned nth);

    /// An access has begun.
    void accessStarted();

    /// The driver asks, between two accesses, whether the chip is busy; the first time decides when
    /// it will be over.
    bool isBusy();

private:
    VirtualClock const& _clock;
    unsigned _remaining = 0;
    bool _isPolled = false;
    std::uint64_t _busyUntil = 0;
};

} // namespace simulation
