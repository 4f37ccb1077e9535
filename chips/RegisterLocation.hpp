#pragma once

#include <string>

#include "chips/RegisterAddress.hpp"
#include "simulation/RegisterTable.hpp"

namespace chips {

/// A register of a chip by number and, as far as the chip's catalogue knows it, by name. Valid as long
/// as the catalogue.
struct RegisterLocation {
    RegisterAddress address;
    /// For example "port 3"; the number when there is no name.
    std::string unit;
    std::string name;
    /// Null when the catalogue does not know the register.
    simulation::Register const* description = nullptr;

    /// For example "port 3/PortControl".
    std::string getText() const { return unit + "/" + name; }

    /// Hexadecimal digits of its values.
    unsigned getDigits() const { return address.getBits() / 4; }
};

} // namespace chips
