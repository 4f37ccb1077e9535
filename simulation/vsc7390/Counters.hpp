#pragma once

#include <cstdint>

#include "simulation/RegisterFile.hpp"

namespace simulation::vitesse {

/// The twelve counters of a port. They live in the port's registers; a write of 0 to the one of the
/// packets that came in clears all.
class Counters {
public:
    /// The counters' rows of the port's table.
    void addTo(RegisterTable& table);

    /// \param registers those that the table became. They must outlive the counters.
    void attach(RegisterFile& registers);

    /// \param address register of the counter; throw std::out_of_range when it is of none.
    std::uint32_t get(unsigned address) const;
    void set(unsigned address, std::uint32_t value);

private:
    void clear();

    RegisterFile* _registers = nullptr;
};

} // namespace simulation::vitesse
