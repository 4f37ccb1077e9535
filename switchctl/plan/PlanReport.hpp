#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>

#include "switchctl/plan/BringUpPlan.hpp"

namespace switchctl::plan {

/// A plan for people and for programs.
class PlanReport {
public:
    /// `plan` must outlive the report.
    explicit PlanReport(BringUpPlan const& plan);

    /// Headings by chip and unit as they come, a line for each write, and what it all costs.
    void print(std::ostream& out) const;
    void printJson(std::ostream& out) const;

    /// The cost in one line, without a line end.
    static void printEffort(std::ostream& out, BringUpPlan const& plan);
    static nlohmann::ordered_json effortToJson(BringUpPlan const& plan);

private:
    void printSteps(std::ostream& out) const;
    void printCounts(std::ostream& out) const;

    BringUpPlan const& _plan;
};

} // namespace switchctl::plan
