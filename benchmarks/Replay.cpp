#include "benchmarks/Replay.hpp"

namespace benchmarks {

namespace {

constexpr unsigned macAddress = 0x80010000;
constexpr unsigned macSize = 0x30;
constexpr unsigned macStatus = 0x18;
constexpr unsigned parallelBusAddress = 0xF3000000;
constexpr unsigned parallelBusSize = 0x1000000;

} // namespace

Replay::Replay(SystemLogInterface& log) : _mac("mac", log, false), _parallelBus("parallel bus", log, false) {
    // A board need not have both.
    _mac.map(macAddress, macSize);
    _parallelBus.map(parallelBusAddress, parallelBusSize);
}

std::vector<Floor::Step> Replay::prepare(std::vector<Access> const& accesses) {
    std::vector<Floor::Step> steps;
    steps.reserve(accesses.size());
    for (Access const& access : accesses) {
        bool const isMac = access.physicalAddress < parallelBusAddress;
        unsigned const offset = access.physicalAddress - (isMac ? macAddress : parallelBusAddress);
        steps.push_back({isMac ? &_mac : &_parallelBus, offset, access.value, access.isWrite,
                         isMac && offset == macStatus});
    }
    return steps;
}

} // namespace benchmarks
