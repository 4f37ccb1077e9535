#pragma once

#include <string>

namespace chips {

/// Where a register is, in the numbers that transports take.
struct RegisterAddress {
    enum class Space {
        /// An internal device of an 88E6096, and a register in it.
        device,
        /// A block and sub-block of a VSC7390, and an address in it.
        block,
        /// A PHY, and a register in it.
        phy,
    };

    Space space = Space::device;
    /// Of Space::block only.
    unsigned block = 0;
    /// Device, sub-block or PHY.
    unsigned unit = 0;
    unsigned address = 0;

    /// Bits that a register has there.
    unsigned getBits() const;

    /// Whether the numbers are such as the chips have; the unit's alone, or the address's too.
    bool isUnitInRange() const;
    bool isInRange() const;

    bool isSameUnit(RegisterAddress const& other) const;

    /// As locations are written: "0x13/0x04", "2.0/0xe0", "phy3/0x02".
    std::string getText() const;
};

} // namespace chips
