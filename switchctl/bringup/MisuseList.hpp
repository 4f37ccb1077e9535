#pragma once

#include <ostream>

#include "simulation/MisuseReport.hpp"

namespace switchctl::bringup {

/// Prints what the drivers did to the models that the chips' makers do not foresee: for each register the
/// numbers of the accesses and what happened.
void printMisuse(std::ostream& out, simulation::MisuseReport const& misuse);

} // namespace switchctl::bringup
