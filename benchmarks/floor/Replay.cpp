#include "benchmarks/floor/Replay.hpp"

namespace benchmarks {

namespace {

constexpr unsigned macAddress = 0x80010000;
constexpr unsigned macSize = 0x30;
constexpr unsigned macStatus = 0x18;
constexpr unsigned parallelBusAddress = 0xF3000000;
constexpr unsigned parallelBusSize = 0x1000000;

// The loop that the MAC is given before each look at it.
inline void idle() {
    constexpr int steps = 1000;
    for (int volatile i = 0; i < steps; ++i) {
    }
}

} // namespace

Replay::Replay(SystemLogInterface& log) : _mac("mac", log, false), _parallelBus("parallel bus", log, false) {
    // A board need not have both.
    _mac.map(macAddress, macSize);
    _parallelBus.map(parallelBusAddress, parallelBusSize);
}

std::vector<Replay::Step> Replay::prepare(std::vector<Access> const& accesses) {
    std::vector<Step> steps;
    steps.reserve(accesses.size());
    for (Access const& access : accesses) {
        bool const isMac = access.physicalAddress < parallelBusAddress;
        unsigned const offset = access.physicalAddress - (isMac ? macAddress : parallelBusAddress);
        steps.push_back({isMac ? &_mac : &_parallelBus, offset, access.value, access.isWrite,
                         isMac && offset == macStatus});
    }
    return steps;
}

std::size_t Replay::run(std::vector<Step> const& steps) {
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
