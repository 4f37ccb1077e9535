#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About the ports that a VSC7390 takes for its own.
std::vector<Check> vitessePortChecks();

} // namespace switchctl::check
