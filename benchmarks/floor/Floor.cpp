#include "benchmarks/floor/Floor.hpp"

namespace benchmarks {

namespace {

// The loop that the MAC is given before each look at it.
inline void idle() {
    constexpr int steps = 1000;
    for (int volatile i = 0; i < steps; ++i) {
    }
}

} // namespace

std::size_t Floor::run(std::vector<Step> const& steps) {
    std::size_t unexpected = 0;
    for (Step const& step : steps) {
        if (step.isMacStatus) {
            idle();
        }
        if (step.isWrite) {
            step.section->set(step.offset, step.value);
        } else {
            unsigned value = 0;
            step.section->get(step.offset, value);
            unexpected += value == step.value ? 0 : 1;
        }
    }
    return unexpected;
}

} // namespace benchmarks
