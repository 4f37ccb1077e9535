#include "benchmarks/AccessRecorder.hpp"

#include <utility>

namespace benchmarks {

namespace {

constexpr std::pair<unsigned, unsigned> windowsOfBoard[] = {{0x80010000, 0x30}, {0xF3000000, 0x1000000}};

} // namespace

AccessRecorder::AccessRecorder(simulation::SimulatedBoard& board) {
    for (auto const& [physicalAddress, size] : windowsOfBoard) {
        if (simulation::SimulatedWindow const* const window = board.window(physicalAddress, size)) {
            _windows.push_back({window->getBaseAddress(), window->getLength(), physicalAddress});
        }
    }
    install(this);
}

AccessRecorder::~AccessRecorder() {
    install(nullptr);
}

void AccessRecorder::accessed(std::uintptr_t address, bool isWrite, std::uint32_t value, bool succeeded) {
    for (Window const& window : _windows) {
        if (succeeded && address - window.base < window.length) {
            auto const offset = static_cast<unsigned>(address - window.base);
            _accesses.push_back({window.physicalAddress + offset, isWrite, value});
        }
    }
}

std::vector<Access> AccessRecorder::take() {
    return std::exchange(_accesses, {});
}

} // namespace benchmarks
