#include "switchctl/plan/PlanDifferenceReport.hpp"

#include <fmt/ostream.h>

#include <nlohmann/json.hpp>

#include "switchctl/plan/PlanReport.hpp"
#include "switchctl/terminal/Colours.hpp"

namespace switchctl::plan {

PlanDifferenceReport::PlanDifferenceReport(BringUpPlan const& first, BringUpPlan const& second)
    : _first(first), _second(second), _difference(first, second) {}

bool PlanDifferenceReport::isEmpty() const {
    return _difference.getUnits().empty();
}

void PlanDifferenceReport::print(std::ostream& out) const {
    if (isEmpty()) {
        return;
    }
    Colours const colours(out);
    fmt::print(out, "- only in {}: {}\n+ only in {}: {}\n", _first.getPath(), PlanReport::effortText(_first),
               _second.getPath(), PlanReport::effortText(_second));
    std::string chip;
    for (PlanDifference::Unit const& unit : _difference.getUnits()) {
        if (unit.place.first != chip) {
            chip = unit.place.first;
            out << chip << '\n';
        }
        out << "  " << unit.place.second << '\n';
        for (WriteAlignment::Lone const& lone : unit.writes) {
            std::string const line = (lone.isInFirst ? "  - " : "  + ") + lone.write.getText();
            out << colours.paint(lone.isInFirst ? Colours::Colour::red : Colours::Colour::green, line)
                << '\n';
        }
    }
}

nlohmann::ordered_json PlanDifferenceReport::toJson() const {
    nlohmann::ordered_json units = nlohmann::ordered_json::array();
    for (PlanDifference::Unit const& unit : _difference.getUnits()) {
        nlohmann::ordered_json writes = nlohmann::ordered_json::array();
        for (WriteAlignment::Lone const& lone : unit.writes) {
            nlohmann::ordered_json write = {{"only", lone.isInFirst ? "first" : "second"}};
            write.update(lone.write.toJson());
            writes.push_back(write);
        }
        units.push_back({{"chip", unit.place.first}, {"unit", unit.place.second}, {"writes", writes}});
    }
    return {{"first", {{"file", _first.getPath()}, {"predicted", PlanReport::effortToJson(_first)}}},
            {"second", {{"file", _second.getPath()}, {"predicted", PlanReport::effortToJson(_second)}}},
            {"differences", units}};
}

} // namespace switchctl::plan
