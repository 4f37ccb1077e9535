#pragma once

#include <array>
#include <cstdint>

#include "simulation/88e6096/CommandUnit.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace simulation::marvell {

/// The unit that counts for every port and captures the counters of one.
class Statistics : public CommandUnit {
public:
    /// \param registers those of Global 1. Both must outlive the unit.
    Statistics(Context& context, RegisterFile& registers);

    /// Throw std::out_of_range.
    std::uint32_t getCounter(unsigned port, unsigned counter) const;
    void setCounter(unsigned port, unsigned counter, std::uint32_t value);

    /// Without a check of the numbers; wraps.
    void count(unsigned port, unsigned counter, std::size_t amount = 1) {
        _counters[port][counter] += static_cast<std::uint32_t>(amount);
    }
    /// The counter is the low half of 64 bits, and the next one the high half.
    void countOctets(unsigned port, unsigned counter, std::size_t octets);

private:
    void perform(std::uint32_t word) override;
    using Counters = std::array<std::uint32_t, Marvell88E6096TestSide::numberOfCounters>;

    void readCaptured(unsigned counter);

    std::array<Counters, Marvell88E6096TestSide::numberOfPorts> _counters{};
    Counters _captured{};
};

} // namespace simulation::marvell
