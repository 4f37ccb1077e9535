#include "switchctl/plan/PlanReport.hpp"

#include <fmt/ostream.h>

#include <nlohmann/json.hpp>

namespace switchctl::plan {

namespace {

std::string milliseconds(std::uint64_t nanoseconds) {
    return fmt::format("{:.4f} ms", static_cast<double>(nanoseconds) / 1e6);
}

} // namespace

void PlanReport::print(std::ostream& out) const {
    printSteps(out);
    printCounts(out);
    fmt::print(out, "predicted: {}\n", effortText(_plan));
}

void PlanReport::printSteps(std::ostream& out) const {
    std::string chip;
    for (BringUpPlan::Step const& step : _plan.getSteps()) {
        if (step.place.first != chip) {
            chip = step.place.first;
            fmt::print(out, "{} ({})\n", chip, _plan.getModel(chip));
        }
        out << "  " << step.place.second << '\n';
        for (PlannedWrite const& write : step.writes) {
            fmt::print(out, "{:>15}  {}\n", milliseconds(write.nanoseconds), write.getText());
        }
    }
}

void PlanReport::printCounts(std::ostream& out) const {
    out << "\naccesses:     writes  reads\n";
    std::string chip;
    for (BringUpPlan::Place const& place : _plan.getPlaces()) {
        if (place.first != chip) {
            chip = place.first;
            out << chip << '\n';
        }
        BringUpPlan::Count const& count = _plan.getCount(place);
        fmt::print(out, "  {:11} {:6} {:6}\n", place.second, count.writes, count.reads);
    }
}

std::string PlanReport::effortText(BringUpPlan const& plan) {
    BringUpPlan::Count const total = plan.getTotal();
    board::BoardSession::Effort const& effort = plan.getEffort();
    return fmt::format("{} register writes and {} reads, {} bus accesses, {} of bus time; ready after {}, "
                       "waits included",
                       total.writes, total.reads, effort.busAccesses, milliseconds(effort.busNanoseconds),
                       milliseconds(effort.elapsedNanoseconds));
}

nlohmann::ordered_json PlanReport::effortToJson(BringUpPlan const& plan) {
    BringUpPlan::Count const total = plan.getTotal();
    board::BoardSession::Effort const& effort = plan.getEffort();
    return {{"writes", total.writes},
            {"reads", total.reads},
            {"busAccesses", effort.busAccesses},
            {"busNanoseconds", effort.busNanoseconds},
            {"elapsedNanoseconds", effort.elapsedNanoseconds}};
}

nlohmann::ordered_json PlanReport::toJson() const {
    nlohmann::ordered_json steps = nlohmann::ordered_json::array();
    for (BringUpPlan::Step const& step : _plan.getSteps()) {
        nlohmann::ordered_json writes = nlohmann::ordered_json::array();
        for (PlannedWrite const& write : step.writes) {
            writes.push_back(write.toJson());
        }
        steps.push_back({{"chip", step.place.first},
                         {"model", _plan.getModel(step.place.first)},
                         {"unit", step.place.second},
                         {"writes", writes}});
    }
    nlohmann::ordered_json counts = nlohmann::ordered_json::array();
    for (BringUpPlan::Place const& place : _plan.getPlaces()) {
        BringUpPlan::Count const& count = _plan.getCount(place);
        counts.push_back({{"chip", place.first},
                          {"unit", place.second},
                          {"writes", count.writes},
                          {"reads", count.reads}});
    }
    return {
        {"file", _plan.getPath()}, {"steps", steps}, {"counts", counts}, {"predicted", effortToJson(_plan)}};
}

} // namespace switchctl::plan
