#pragma once

#include <cstddef>
#include <random>
#include <vector>

#include "tests/races/Scheduler.hpp"

namespace race_test {

/// A number of orders in which something can happen, the same ones in every test run.
class SampledOrders {
public:
    explicit SampledOrders(std::size_t number) : _number(number) { draw(); }

    /// The decisions of the next run.
    std::vector<std::size_t> const& getPlan() const { return _plan; }

    /// A run is over. Returns whether there is another one.
    bool next(std::vector<Scheduler::Choice> const& /*choices*/) {
        ++_count;
        draw();
        return _count < _number;
    }

    /// Runs so far.
    std::size_t getCount() const { return _count; }

private:
    static constexpr std::size_t decisions = 64;

    void draw() {
        _plan.clear();
        for (std::size_t i = 0; i < decisions; ++i) {
            _plan.push_back(_generator());
        }
    }

    std::size_t _number;
    std::size_t _count = 0;
    // Its numbers are the same everywhere.
    std::mt19937 _generator; // NOLINT(cert-msc51-cpp): on purpose
    std::vector<std::size_t> _plan;
};

} // namespace race_test
