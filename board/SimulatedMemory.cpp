#include "board/SimulatedMemory.hpp"

#include "simulation/SimulatedBoard.hpp"

namespace board {

SimulatedMemory::SimulatedMemory(simulation::SimulatedBoard& board) : _board(board) {}

bool SimulatedMemory::map(unsigned int physicalAddress, unsigned int size, Mapping& mapping,
                          std::string& reason) {
    simulation::SimulatedWindow const* const window = _board.window(physicalAddress, size);
    if (window == nullptr) {
        reason = "nothing on the simulated board answers there";
        return false;
    }
    mapping.baseAddress = window->getBaseAddress();
    mapping.startOffset = 0;
    mapping.length = window->getLength();
    return true;
}

void SimulatedMemory::unmap(Mapping const& /*mapping*/) noexcept {}

} // namespace board
