#pragma once

#include <string>

#include "simulation/88e6096/Marvell88E6096Options.hpp"
#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/Services.hpp"

namespace simulation::marvell {

/// What the units of one chip share.
struct Context {
    Services& services;
    std::string chip;
    Marvell88E6096Options options;
    /// The SMI command that is being carried out, counted from 1.
    unsigned transfer = 0;
};

} // namespace simulation::marvell
