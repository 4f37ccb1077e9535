#pragma once

#include <cstddef>

#include "simulation/BusDevice.hpp"

namespace simulation {

class MdioBus;

/// Where the chips of a board can be attached.
class BoardBuses {
public:
    virtual ~BoardBuses() = default;

    /// The bus behind the MDIO master of the Ethernet MAC.
    virtual MdioBus& getMdioBus() = 0;

    /// Makes `device` answer a window of physical addresses. It must live as long as the board.
    virtual void addWindow(unsigned physicalAddress, std::size_t size, BusDevice& device) = 0;
};

} // namespace simulation
