#pragma once

#include <cstdint>
#include <functional>

#include "simulation/88e6096/CommandUnit.hpp"
#include "simulation/AccessFault.hpp"
#include "simulation/MdioDevice.hpp"

namespace simulation::marvell {

/// The two registers that the chip shows on its MDIO bus in multi-chip mode. All others are reached
/// through them.
class Smi : public MdioDevice {
public:
    /// The registers of an internal device, 0 to 31.
    using DeviceFinder = std::function<RegisterFile&(unsigned device)>;

    /// `context` must outlive the unit.
    Smi(Context& context, DeviceFinder findDevice);

    std::uint16_t mdioRead(unsigned registerAddress) override;
    void mdioWrite(unsigned registerAddress, std::uint16_t value) override;

    void setPlugged(bool plugged) { _isPlugged = plugged; }

    CommandTimer& getTimer() { return _timer; }
    AccessFault& getFault() { return _fault; }

private:
    std::uint16_t readCommand();
    void start(std::uint16_t word);
    void report(MisuseReport::Kind kind, char const* registerName, char const* text);

    Context& _context;
    DeviceFinder _findDevice;
    CommandTimer _timer;
    AccessFault _fault;
    std::uint16_t _command = 0;
    std::uint16_t _data = 0;
    /// A value was read and has not been fetched yet.
    bool _isAccessOpen = false;
    bool _isPlugged = true;
};

} // namespace simulation::marvell
