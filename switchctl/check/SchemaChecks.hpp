#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// The check against the schema.
std::vector<Check> schemaChecks();

} // namespace switchctl::check
