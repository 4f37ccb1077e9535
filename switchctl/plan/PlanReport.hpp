#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>

#include "switchctl/plan/BringUpPlan.hpp"

namespace switchctl::plan {

/// A plan for people and for programs.
class PlanReport {
public:
    /// `plan` must outlive the report.
    explicit PlanReport(BringUpPlan const& plan) : _plan(plan) {}

    /// Headings by chip and unit as they come, a line for each write, and what it all costs.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// The cost in one line.
    static std::string effortText(BringUpPlan const& plan);
    static nlohmann::ordered_json effortToJson(BringUpPlan const& plan);

private:
    void printSteps(std::ostream& out) const;
    void printCounts(std::ostream& out) const;

    BringUpPlan const& _plan;
};

} // namespace switchctl::plan
