#pragma once

#include <vector>

#include "switchctl/plan/BringUpPlan.hpp"
#include "switchctl/plan/WriteAlignment.hpp"

namespace switchctl::plan {

/// What two plans do not have in common, by chip and unit.
class PlanDifference {
public:
    struct Unit {
        BringUpPlan::Place place;
        std::vector<WriteAlignment::Lone> writes;
    };

    PlanDifference(BringUpPlan const& first, BringUpPlan const& second);

    /// The units with a difference: those of the first plan in its order, then what only the second has.
    std::vector<Unit> const& getUnits() const { return _units; }

private:
    std::vector<Unit> _units;
};

} // namespace switchctl::plan
