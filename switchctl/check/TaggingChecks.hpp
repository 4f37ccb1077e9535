#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// About how ports treat tags, over all VLANs that they are in.
std::vector<Check> taggingChecks();

} // namespace switchctl::check
