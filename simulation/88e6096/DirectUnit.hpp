#pragma once

#include "simulation/MdioDevice.hpp"
#include "simulation/RegisterFile.hpp"

namespace simulation::marvell {

/// A unit that answers at an MDIO address of its own, as all do in single-chip mode.
class DirectUnit : public MdioDevice {
public:
    /// `unit` must outlive the object.
    explicit DirectUnit(RegisterFile& unit) : _unit(unit) {}

    std::uint16_t mdioRead(unsigned registerAddress) override {
        return static_cast<std::uint16_t>(_unit.read(registerAddress, ++_transfers));
    }
    void mdioWrite(unsigned registerAddress, std::uint16_t value) override {
        _unit.write(registerAddress, value, ++_transfers);
    }

private:
    RegisterFile& _unit;
    unsigned _transfers = 0;
};

} // namespace simulation::marvell
