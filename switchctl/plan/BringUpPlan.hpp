#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "board/BoardSession.hpp"
#include "board/ModelBringUp.hpp"
#include "switchctl/plan/PlannedWrite.hpp"

namespace switchctl::plan {

/// What a bring-up of a document writes to the chips, in order, and what it costs.
class BringUpPlan {
public:
    /// Chip and unit by the names of the access log, for example "switch 0" and "port 3".
    using Place = std::pair<std::string, std::string>;

    /// Writes to one unit with none to another in between.
    struct Step {
        Place place;
        std::vector<PlannedWrite> writes;
    };

    struct Count {
        unsigned writes = 0;
        unsigned reads = 0;
    };

    /// What the models of a board saw of its bring-up.
    explicit BringUpPlan(board::ModelBringUp& bringUp);

    /// Path of the document.
    std::string const& getPath() const { return _path; }

    std::vector<Step> const& getSteps() const { return _steps; }

    /// The places that were accessed, in the order of their first access.
    std::vector<Place> const& getPlaces() const { return _places; }
    Count const& getCount(Place const& place) const;
    Count getTotal() const;

    /// All writes to a unit, in order; none for a place that was not accessed.
    std::vector<PlannedWrite> getWrites(Place const& place) const;

    /// Of the models: on a board, the processor's own time comes on top.
    board::BoardSession::Effort const& getEffort() const { return _effort; }

    /// Of a switch, by the log's name of it: the document's switchModel.
    std::string getModel(std::string const& chip) const;

private:
    void add(simulation::AccessLog::Entry const& entry);
    void addWrite(Place const& place, simulation::AccessLog::Entry const& entry);

    std::string _path;
    std::map<std::string, std::string> _models;
    std::vector<Step> _steps;
    std::vector<Place> _places;
    std::map<Place, Count> _counts;
    board::BoardSession::Effort _effort;
};

} // namespace switchctl::plan
