#include "board/ProgressWatch.hpp"

#include "simulation/VirtualClock.hpp"

#include <fmt/format.h>

#include <exception>
#include <stdexcept>
#include <utility>

#include "board/trace/TracedMemory.hpp"

namespace board {

namespace {

constexpr unsigned bitsOfValue = 32;
/// The library's waits poll one register; over the slowest bus that is a dozen different accesses.
constexpr std::size_t mostOfAWait = 64;

} // namespace

ProgressWatch::ProgressWatch(BoardReading const& document, unsigned limit)
    : _chips(document), _decoder(_chips, *this), _limit(limit) {}

std::unique_ptr<reference_host::PhysicalMemory>
ProgressWatch::wrap(std::unique_ptr<reference_host::PhysicalMemory> memory) {
    return std::make_unique<TracedMemory>(std::move(memory), *this);
}

void ProgressWatch::accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (_isStopped) {
        return;
    }
    _decoder.accessed(physicalAddress, isWrite, value, succeeded);
    if (!isStalled(physicalAddress, isWrite, value)) {
        return;
    }
    if (_stall.empty()) {
        _decoder.finish();
        _stall = describe(physicalAddress);
    }
    // What is on its way out already may have to write something.
    if (std::uncaught_exceptions() == 0) {
        throw std::runtime_error(fmt::format("no progress for {} s: waiting for {}", _limit, _stall));
    }
}

void ProgressWatch::stop() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _isStopped = true;
}

std::string ProgressWatch::getStall() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _stall;
}

// By the decoder, within accessed().
void ProgressWatch::add(chips::TraceAccess const& access) {
    _last = access;
}

bool ProgressWatch::isStalled(unsigned physicalAddress, bool isWrite, std::uint32_t value) {
    // Accesses are to whole words, which leaves the lowest bit of the address free.
    std::uint64_t const access =
        std::uint64_t{physicalAddress | static_cast<unsigned>(isWrite)} << bitsOfValue | value;
    std::uint64_t const now = _clock.getNanoseconds();
    bool const isNew = _made.insert(access).second;
    _recent.insert(access);
    if (isNew || _recent.size() > mostOfAWait) {
        _recent.clear();
        _lastProgress = now;
    }
    return now - _lastProgress > _limit * simulation::VirtualClock::nanosecondsPerSecond;
}

std::string ProgressWatch::describe(unsigned physicalAddress) const {
    chips::ChipCatalogue const* const chip = _last ? _chips.find(_last->switchId) : nullptr;
    if (chip == nullptr || _last->nanoseconds < _lastProgress) {
        return fmt::format("the bus itself, at 0x{:08x}", physicalAddress);
    }
    return fmt::format("switch {} ({}), {}", _last->switchId, chip->getModel(),
                       _last->address ? chip->locate(*_last->address).getText() : "which stays busy");
}

} // namespace board
