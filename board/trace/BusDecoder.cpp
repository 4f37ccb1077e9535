#include "board/trace/BusDecoder.hpp"

#include "simulation/Arm920tMac.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace board {

using simulation::Arm920tMac;
using simulation::Vsc7390TestSide;

BusDecoder::BusDecoder(TraceChips const& chips, chips::TraceSink& sink) {
    for (auto const& [id, chip] : chips.getAll()) {
        if (chip->getModel() != "vsc7390") {
            _mdio.addChip(id, sink);
        } else if (!_parallel) {
            _parallel.emplace(id, sink);
        }
    }
}

void BusDecoder::accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) {
    std::lock_guard<std::mutex> const lock(_mutex);
    chips::BusAccess access{_clock.getNanoseconds(), 0, isWrite, value, succeeded};
    if (physicalAddress >= Vsc7390TestSide::physicalAddress) {
        access.offset = physicalAddress - Vsc7390TestSide::physicalAddress;
        if (_parallel && access.offset < Vsc7390TestSide::windowSize) {
            _parallel->accessed(access);
        }
    } else if (physicalAddress >= Arm920tMac::physicalAddress) {
        access.offset = physicalAddress - Arm920tMac::physicalAddress;
        if (access.offset < Arm920tMac::size) {
            _mdio.accessed(access);
        }
    }
}

void BusDecoder::finish() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _mdio.finish();
    if (_parallel) {
        _parallel->finish();
    }
}

} // namespace board
