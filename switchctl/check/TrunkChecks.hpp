#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About link-aggregation groups.
std::vector<Check> trunkChecks();

} // namespace switchctl::check
