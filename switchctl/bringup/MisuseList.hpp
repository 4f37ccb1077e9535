#pragma once

#include <string>
#include <vector>

#include "simulation/MisuseReport.hpp"

namespace switchctl::bringup {

/// What the drivers did to the models that the chips' makers do not foresee, a line each: register, number of
/// the access, and what happened.
std::vector<std::string> linesOfMisuse(simulation::MisuseReport const& misuse);

} // namespace switchctl::bringup
