#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About the entries that groups get in the MAC table of a VSC7390.
std::vector<Check> groupTableChecks();

} // namespace switchctl::check
