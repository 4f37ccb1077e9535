#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About the members of VLANs.
std::vector<Check> memberChecks();

} // namespace switchctl::check
