#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About ways that VLANs open or do not open between ports.
std::vector<Check> pathChecks();

} // namespace switchctl::check
