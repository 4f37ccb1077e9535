#pragma once

#include <string>

#include "simulation/RegisterTable.hpp"

namespace simulation {

/// Which registers an access went to: the chip, the unit in it, and what the unit's registers are
/// called.
struct UnitIdentity {
    std::string chip;
    std::string unit;
    RegisterTable registers;

    /// Name of the register there, or a text with its number when the unit does not have it.
    std::string registerName(unsigned address) const;
};

} // namespace simulation
