#pragma once

#include <vector>

#include "simulation/BusFaults.hpp"

namespace fault_test {

/// For each access of the record, the id of the switch that it is for.
/// \param parallelSwitch id of the switch on the parallel bus.
std::vector<unsigned> addressedSwitches(std::vector<simulation::BusFaults::Access> const& record,
                                        unsigned parallelSwitch);

} // namespace fault_test
