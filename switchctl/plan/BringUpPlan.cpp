#include "switchctl/plan/BringUpPlan.hpp"

#include "chips/RegisterAddress.hpp"

namespace switchctl::plan {

using simulation::AccessLog;

BringUpPlan::BringUpPlan(board::ModelBringUp& bringUp)
    : _path(bringUp.getPath()), _effort(bringUp.getEffort()) {
    for (unsigned const id : bringUp.getBoard().getSwitchIds()) {
        _models["switch " + std::to_string(id)] = bringUp.getModel(id);
    }
    // The effort is of start-up alone, and so are these.
    std::vector<AccessLog::Entry> const entries = bringUp.getBoard().getLog().getEntries();
    for (std::size_t index = 0; index < entries.size() && index < _effort.registerAccesses; ++index) {
        add(entries[index]);
    }
}

void BringUpPlan::add(AccessLog::Entry const& entry) {
    Place const place(entry.chip, entry.unit);
    if (_counts.count(place) == 0) {
        _places.push_back(place);
    }
    Count& count = _counts[place];
    if (entry.kind == AccessLog::Kind::read) {
        ++count.reads;
        return;
    }
    ++count.writes;
    addWrite(place, entry);
}

void BringUpPlan::addWrite(Place const& place, AccessLog::Entry const& entry) {
    if (_steps.empty() || _steps.back().place != place) {
        _steps.push_back({place, {}});
    }
    unsigned const digits = chips::RegisterAddress{entry.identity->place, entry.address}.getBits() / 4;
    _steps.back().writes.push_back(
        {entry.nanoseconds, entry.registerName, entry.address, entry.value, digits, entry.changes});
}

BringUpPlan::Count const& BringUpPlan::getCount(Place const& place) const {
    return _counts.at(place);
}

BringUpPlan::Count BringUpPlan::getTotal() const {
    Count total;
    for (auto const& [place, count] : _counts) {
        total.writes += count.writes;
        total.reads += count.reads;
    }
    return total;
}

std::vector<PlannedWrite> BringUpPlan::getWrites(Place const& place) const {
    std::vector<PlannedWrite> writes;
    for (Step const& step : _steps) {
        if (step.place == place) {
            writes.insert(writes.end(), step.writes.begin(), step.writes.end());
        }
    }
    return writes;
}

std::string BringUpPlan::getModel(std::string const& chip) const {
    auto const found = _models.find(chip);
    return found == _models.end() ? "" : found->second;
}

} // namespace switchctl::plan
