#include "switchctl/plan/PlanReport.hpp"

#include <cstdio>
#include <iomanip>
#include <nlohmann/json.hpp>

namespace switchctl::plan {

namespace {

constexpr double nanosecondsPerMillisecond = 1e6;
constexpr int widthOfUnit = 11;
constexpr int widthOfCount = 6;

std::string milliseconds(std::uint64_t nanoseconds) {
    char text[48];
    std::snprintf(text, sizeof text, "%.4f", static_cast<double>(nanoseconds) / nanosecondsPerMillisecond);
    return text;
}

} // namespace

PlanReport::PlanReport(BringUpPlan const& plan) : _plan(plan) {}

void PlanReport::print(std::ostream& out) const {
    printSteps(out);
    printCounts(out);
    out << "predicted: ";
    printEffort(out, _plan);
    out << '\n';
}

void PlanReport::printSteps(std::ostream& out) const {
    constexpr int widthOfTime = 12;
    std::string chip;
    for (BringUpPlan::Step const& step : _plan.getSteps()) {
        if (step.place.first != chip) {
            chip = step.place.first;
            out << chip << " (" << _plan.getModel(chip) << ")\n";
        }
        out << "  " << step.place.second << '\n';
        for (PlannedWrite const& write : step.writes) {
            out << std::setw(widthOfTime) << milliseconds(write.nanoseconds) << " ms  ";
            write.print(out);
            out << '\n';
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
        out << "  " << std::left << std::setw(widthOfUnit) << place.second << std::right << ' '
            << std::setw(widthOfCount) << count.writes << ' ' << std::setw(widthOfCount) << count.reads
            << '\n';
    }
}

void PlanReport::printEffort(std::ostream& out, BringUpPlan const& plan) {
    BringUpPlan::Count const total = plan.getTotal();
    board::BoardSession::Effort const& effort = plan.getEffort();
    out << total.writes << " register writes and " << total.reads << " reads, " << effort.busAccesses
        << " bus accesses, " << milliseconds(effort.busNanoseconds) << " ms of bus time; ready after "
        << milliseconds(effort.elapsedNanoseconds) << " ms, waits included";
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

void PlanReport::printJson(std::ostream& out) const {
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
    nlohmann::ordered_json const plan = {
        {"file", _plan.getPath()}, {"steps", steps}, {"counts", counts}, {"predicted", effortToJson(_plan)}};
    out << plan.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace switchctl::plan
