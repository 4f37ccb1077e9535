#include "board/trace/BusDecoder.hpp"

#include <utility>

#include "chips/ChipKinds.hpp"

namespace board {

BusDecoder::BusDecoder(TraceChips const& chips, chips::TraceSink& sink) {
    for (auto const& [id, chip] : chips.getAll()) {
        chips::ChipKinds::get(chip->getModel(), "traces").decode(id, sink, _windows);
    }
}

void BusDecoder::accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) {
    std::lock_guard<std::mutex> const lock(_mutex);
    auto const next = _windows.upper_bound(physicalAddress);
    if (_isFinished || next == _windows.begin()) {
        return;
    }
    auto const& [start, window] = *std::prev(next);
    unsigned const offset = physicalAddress - start;
    if (offset < window.size) {
        window.decoder->accessed({_clock.getNanoseconds(), offset, isWrite, value, succeeded});
    }
}

void BusDecoder::finish() {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (std::exchange(_isFinished, true)) {
        return;
    }
    for (auto const& [start, window] : _windows) {
        window.decoder->finish();
    }
}

} // namespace board
