#pragma once

#include <string>

#include "simulation/UnitIdentity.hpp"

namespace chips {

/// Where a register is, in the numbers that transports take: a place in the chip, and a number there.
struct RegisterAddress : simulation::UnitPlace {
    unsigned address = 0;

    /// Bits that a register has there.
    unsigned getBits() const;

    /// Whether the numbers are such as the chips have; the unit's alone, or the address's too.
    bool isUnitInRange() const;
    bool isInRange() const;

    bool isSameUnit(UnitPlace const& other) const;

    /// As locations are written: "0x13/0x04", "2.0/0xe0", "phy3/0x02"; and its parts.
    std::string getText() const { return getUnitText() + "/" + getNumberText(); }
    std::string getUnitText() const;
    std::string getNumberText() const;
};

} // namespace chips
