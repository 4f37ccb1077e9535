#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "chips/PortCounters.hpp"

namespace switchctl::statistics {

/// What one port's counters went on by between two readings.
struct CounterRates {
    struct Rate {
        /// How much was counted, across the counter's wrap; nothing when that cannot be told.
        std::optional<std::uint64_t> counted;
        /// Both readings are there, but the second is lower than any wrap explains: it was cleared.
        bool isCleared = false;
    };

    /// In the order of PortCounters::getCounters(). Both are of the same port.
    /// \param seconds between the two, more than 0.
    static std::vector<Rate> between(chips::PortCounters const& before, chips::PortCounters const& after,
                                     double seconds);

    /// Of one counter. A counter that is lower than before has wrapped, if a line of 1 Gbit/s can have
    /// brought it so far in that time; else it was cleared.
    static Rate between(chips::Counter const& counter, std::uint64_t before, std::uint64_t after,
                        double seconds);
};

} // namespace switchctl::statistics
