#pragma once

#include <string>

#include "simulation/Services.hpp"
#include "simulation/vsc7390/Vsc7390Options.hpp"

namespace simulation::vitesse {

/// What the units of one chip share.
struct Context {
    Services& services;
    std::string chip;
    Vsc7390Options options;
    /// The register access over the bus that is being carried out, counted from 1.
    unsigned transfer = 0;
};

} // namespace simulation::vitesse
