#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About VLANs: their ids and types, and which members they find.
std::vector<Check> vlanChecks();

} // namespace switchctl::check
