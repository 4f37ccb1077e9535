#pragma once

#include <string>

#include "chips/RegisterLocation.hpp"

namespace switchctl::registers {

/// What a dump contains: registers that can be read without changing anything of the chip.
struct DumpSelection {
    /// \param physOnly whether PHYs are dumped, and nothing else; otherwise they are what is left out,
    ///        as reading one is a command to the chip.
    static bool contains(chips::RegisterLocation const& location, bool physOnly);

    /// What is left out and why, for people.
    static std::string explain();
};

} // namespace switchctl::registers
