#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "simulation/SimulatedBoard.hpp"

namespace fault_test {

/// What the chips of a board hold: every register and table entry, by switch id. Two chips that hold
/// the same have equal images.
using BoardImage = std::map<unsigned, std::vector<std::uint64_t>>;

BoardImage imageOf(simulation::SimulatedBoard& board);

} // namespace fault_test
