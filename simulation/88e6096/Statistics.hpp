#pragma once

#include <array>
#include <cstdint>

#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace simulation::marvell {

/// The unit that counts for every port and captures the counters of one.
class Statistics {
public:
    /// \param registers those of Global 1. Both must outlive the unit.
    Statistics(Context& context, RegisterFile& registers);

    /// The word that was written to the operation register.
    void operate(std::uint32_t word);

    CommandTimer& getTimer();
    CommandTimer const& getTimer() const;

    /// Throw std::out_of_range.
    std::uint32_t getCounter(unsigned port, unsigned counter) const;
    void setCounter(unsigned port, unsigned counter, std::uint32_t value);

private:
    using Counters = std::array<std::uint32_t, Marvell88E6096TestSide::numberOfCounters>;

    void perform(unsigned operation, unsigned number);
    void readCaptured(unsigned counter);
    void reportMeaningless(char const* what);

    RegisterFile& _registers;
    CommandTimer _timer;
    std::array<Counters, Marvell88E6096TestSide::numberOfPorts> _counters{};
    Counters _captured{};
};

} // namespace simulation::marvell
