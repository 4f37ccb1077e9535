#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>

#include "switchctl/plan/BringUpPlan.hpp"
#include "switchctl/plan/PlanDifference.hpp"

namespace switchctl::plan {

/// The difference of two plans for people and for programs.
class PlanDifferenceReport {
public:
    /// Both plans must outlive the report.
    PlanDifferenceReport(BringUpPlan const& first, BringUpPlan const& second);

    bool isEmpty() const;

    /// Nothing when there is no difference.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

private:
    BringUpPlan const& _first;
    BringUpPlan const& _second;
    PlanDifference _difference;
};

} // namespace switchctl::plan
