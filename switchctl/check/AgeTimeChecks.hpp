#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About the time after which a switch forgets an address.
std::vector<Check> ageTimeChecks();

} // namespace switchctl::check
