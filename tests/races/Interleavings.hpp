#pragma once

#include <cstddef>
#include <vector>

#include "tests/races/Scheduler.hpp"

namespace race_test {

/// Goes through all orders in which something can happen, one after the other.
class Interleavings {
public:
    /// The decisions with which the next run is to begin.
    std::vector<std::size_t> const& getPlan() const { return _plan; }

    /// A run with that plan is over. Returns whether there is another one.
    bool next(std::vector<Scheduler::Choice> choices) {
        ++_count;
        while (!choices.empty() && choices.back().chosen + 1 >= choices.back().possible) {
            choices.pop_back();
        }
        _plan.clear();
        for (Scheduler::Choice const& choice : choices) {
            _plan.push_back(choice.chosen);
        }
        if (_plan.empty()) {
            return false;
        }
        ++_plan.back();
        return true;
    }

    /// Runs so far.
    std::size_t getCount() const { return _count; }

private:
    std::vector<std::size_t> _plan;
    std::size_t _count = 0;
};

} // namespace race_test
