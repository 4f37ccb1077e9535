#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About forwarded multicast groups and the ports that receive them.
std::vector<Check> groupChecks();

} // namespace switchctl::check
