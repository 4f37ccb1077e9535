#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About switch elements: where they stand, their ids and models.
std::vector<Check> switchChecks();

} // namespace switchctl::check
