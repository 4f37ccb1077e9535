#pragma once

#include <cstdint>
#include <optional>

#include "simulation/BusDevice.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation {

/// The VSC7390 as the serial controller beside it has it: on the chip's parallel bus, like a processor.
/// PHYs are those of the chip's MII controller 1.
class SerialControllerChip {
public:
    /// \param window the chip's window.
    /// \param clock the board's; waits for the chip move it. Both must outlive the object.
    SerialControllerChip(BusDevice& window, VirtualClock& clock);

    /// \return here and below: nothing when the bus refuses, or the chip does not get ready in 100 ms.
    std::optional<std::uint32_t> readRegister(unsigned block, unsigned subBlock, unsigned address);
    bool writeRegister(unsigned block, unsigned subBlock, unsigned address, std::uint32_t value);

    /// A PHY that does not answer reads as the MII controller has it, all ones.
    std::optional<std::uint16_t> readPhy(unsigned phy, unsigned address);
    bool writePhy(unsigned phy, unsigned address, std::uint16_t value);

private:
    std::optional<std::uint32_t> readBus(unsigned block, unsigned subBlock, unsigned address);
    template <typename Condition> bool waitUntil(Condition condition);
    bool isMiiIdle();
    bool startMii(std::uint32_t command);

    BusDevice& _window;
    VirtualClock& _clock;
};

} // namespace simulation
