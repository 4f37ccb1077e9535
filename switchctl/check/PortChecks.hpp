#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About the ports of a switch.
std::vector<Check> portChecks();

} // namespace switchctl::check
