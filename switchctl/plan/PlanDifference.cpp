#include "switchctl/plan/PlanDifference.hpp"

#include <algorithm>

namespace switchctl::plan {

PlanDifference::PlanDifference(BringUpPlan const& first, BringUpPlan const& second) {
    std::vector<BringUpPlan::Place> places = first.getPlaces();
    for (BringUpPlan::Place const& place : second.getPlaces()) {
        if (std::find(places.begin(), places.end(), place) == places.end()) {
            places.push_back(place);
        }
    }
    for (BringUpPlan::Place const& place : places) {
        WriteAlignment::Writes const before = first.getWrites(place);
        WriteAlignment::Writes const after = second.getWrites(place);
        WriteAlignment const alignment(before, after);
        if (!alignment.getLone().empty()) {
            _units.push_back({place, alignment.getLone()});
        }
    }
}

} // namespace switchctl::plan
