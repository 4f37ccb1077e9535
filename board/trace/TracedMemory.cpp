#include "board/trace/TracedMemory.hpp"

#include <algorithm>
#include <utility>

namespace board {

TracedMemory::TracedMemory(std::unique_ptr<reference_host::PhysicalMemory> memory, BusListener& listener)
    : _memory(std::move(memory)), _listener(listener) {
    _previous = simulation::AccessObserver::install(this);
}

TracedMemory::~TracedMemory() {
    simulation::AccessObserver::install(_previous);
}

bool TracedMemory::map(unsigned int physicalAddress, unsigned int size, Mapping& mapping,
                       std::string& reason) {
    if (!_memory->map(physicalAddress, size, mapping, reason)) {
        return false;
    }
    std::uintptr_t const begin = mapping.baseAddress + mapping.startOffset;
    std::lock_guard<std::mutex> const lock(_mutex);
    _windows.push_back({begin, begin + size, physicalAddress, mapping.baseAddress});
    return true;
}

void TracedMemory::unmap(Mapping const& mapping) noexcept {
    {
        std::lock_guard<std::mutex> const lock(_mutex);
        auto const found = std::find_if(_windows.begin(), _windows.end(), [&](Window const& window) {
            return window.baseAddress == mapping.baseAddress;
        });
        if (found != _windows.end()) {
            _windows.erase(found);
        }
    }
    _memory->unmap(mapping);
}

void TracedMemory::accessed(std::uintptr_t address, bool isWrite, std::uint32_t value, bool succeeded) {
    if (auto const physicalAddress = physicalAddressOf(address)) {
        _listener.accessed(*physicalAddress, isWrite, value, succeeded);
    }
    if (_previous != nullptr) {
        _previous->accessed(address, isWrite, value, succeeded);
    }
}

std::optional<unsigned> TracedMemory::physicalAddressOf(std::uintptr_t address) {
    std::lock_guard<std::mutex> const lock(_mutex);
    for (Window const& window : _windows) {
        if (address >= window.begin && address < window.end) {
            return window.physicalAddress + static_cast<unsigned>(address - window.begin);
        }
    }
    return std::nullopt;
}

} // namespace board
