#include "benchmarks/Replay.hpp"

#include "simulation/Arm920tMac.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace benchmarks {

namespace {

using simulation::Arm920tMac;
using simulation::Vsc7390TestSide;

constexpr unsigned macStatus = 0x18;

} // namespace

Replay::Replay(SystemLogInterface& log) : _mac("mac", log, false), _parallelBus("parallel bus", log, false) {
    // A board need not have both.
    _mac.map(Arm920tMac::physicalAddress, Arm920tMac::size);
    _parallelBus.map(Vsc7390TestSide::physicalAddress, Vsc7390TestSide::windowSize);
}

std::vector<Floor::Step> Replay::prepare(std::vector<Access> const& accesses) {
    std::vector<Floor::Step> steps;
    steps.reserve(accesses.size());
    for (Access const& access : accesses) {
        bool const isMac = access.physicalAddress < Vsc7390TestSide::physicalAddress;
        unsigned const offset =
            access.physicalAddress - (isMac ? Arm920tMac::physicalAddress : Vsc7390TestSide::physicalAddress);
        steps.push_back({isMac ? &_mac : &_parallelBus, offset, access.value, access.isWrite,
                         isMac && offset == macStatus});
    }
    return steps;
}

} // namespace benchmarks
