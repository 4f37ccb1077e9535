#include "benchmarks/AccessRecorder.hpp"

#include <utility>

#include "simulation/Arm920tMac.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace benchmarks {

namespace {

using simulation::Arm920tMac;
using simulation::Vsc7390TestSide;

constexpr unsigned windowsOfBoard[][2] = {{Arm920tMac::physicalAddress, Arm920tMac::size},
                                          {Vsc7390TestSide::physicalAddress, Vsc7390TestSide::windowSize}};

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
