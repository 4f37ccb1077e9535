#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// All checks, in the order in which they are listed.
std::vector<Check> const& allChecks();

} // namespace switchctl::check
