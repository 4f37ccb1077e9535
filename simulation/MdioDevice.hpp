#pragma once

#include <cstdint>

namespace simulation {

/// What answers clause-22 frames at one address of an MDIO bus.
class MdioDevice {
public:
    virtual ~MdioDevice() = default;

    /// \param registerAddress 0 to 31.
    virtual std::uint16_t mdioRead(unsigned registerAddress) = 0;
    virtual void mdioWrite(unsigned registerAddress, std::uint16_t value) = 0;
};

} // namespace simulation
