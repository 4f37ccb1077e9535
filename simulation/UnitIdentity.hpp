#pragma once

#include <string>

#include "simulation/RegisterTable.hpp"

namespace simulation {

enum class UnitKind { port, global, phy, analyser, arbiter, mii, memory, capture, system, unknown };

/// Where a unit is, in the numbers that the chip's bus has for it.
struct UnitPlace {
    enum class Space {
        /// An internal device of an 88E6096.
        device,
        /// A block and sub-block of a VSC7390.
        block,
        /// A PHY, behind the chip's command registers.
        phy,
    };

    Space space = Space::device;
    /// Of Space::block only.
    unsigned block = 0;
    /// Device, sub-block or PHY.
    unsigned unit = 0;

    bool operator<(UnitPlace const& other) const;
};

/// Which registers an access went to: the chip, the unit in it, and what the unit's registers are
/// called.
struct UnitIdentity {
    /// A unit by what it is; called, for example, "port 3" or "system".
    UnitIdentity(std::string const& chipName, UnitKind unitKind, unsigned unitNumber, UnitPlace unitPlace);
    /// One of no kind, for example a place where the chip has nothing.
    UnitIdentity(std::string const& chipName, std::string const& unitName, UnitPlace unitPlace = {});

    std::string chip;
    std::string unit;
    UnitKind kind;
    /// Among those of its kind; 0 when there is one.
    unsigned number = 0;
    UnitPlace place;
    RegisterTable registers;

    /// Name of the register there, or a text with its number when the unit does not have it.
    std::string registerName(unsigned address) const;
};

} // namespace simulation
