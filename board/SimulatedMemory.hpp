#pragma once

#include <string>

#include "reference_host/PhysicalMemory.hpp"

namespace simulation {
class SimulatedBoard;
}

namespace board {

/// The physical addresses of a simulated board: sections get mapped to its windows.
class SimulatedMemory : public reference_host::PhysicalMemory {
public:
    /// The board must outlive the memory and everything that is mapped.
    explicit SimulatedMemory(simulation::SimulatedBoard& board);

    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;

    /// The windows are the board's and stay.
    void unmap(Mapping const& mapping) noexcept override;

private:
    simulation::SimulatedBoard& _board;
};

} // namespace board
