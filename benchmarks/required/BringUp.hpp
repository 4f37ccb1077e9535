#pragma once

#include "benchmarks/required/BoardPlan.hpp"
#include "host/SystemLogInterface.hpp"

namespace required {

/// Looks for a chip.
void probe(Probe const& wanted, SystemLogInterface& log);

/// Brings a board up by what is required of the bus and nothing more: looks for the chips, sets them
/// up, and pushes VLANs, trunks, groups and port settings, in this order. The 88E6096's buses
/// stay set up.
/// \param log only says where the sections of the bus get mapped.
void bringUp(BoardPlan const& board, SystemLogInterface& log);

} // namespace required
