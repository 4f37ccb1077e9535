#pragma once

#include "model/BitField.hpp"

/// Registers of the 88E6096's internal PHYs; the PHY of a port has the port's number as its address.
namespace phy_registers {

enum Register : unsigned short {
    control = 0,          ///< IEEE 802.3 clause 22.2.4.1
    specificControl = 16, ///< the PHY's own
};

using Field = BitField<unsigned short>;

namespace control_bits {
constexpr Field reset(15);
constexpr Field speedLow(13);
constexpr Field powerDown(11);
constexpr Field duplex(8); ///< 1 is full
constexpr Field speedHigh(6);
} // namespace control_bits

namespace specific_control {
/// 0 MDI, 1 MDI-X, 3 automatic.
constexpr Field mdiMode(4, 2);
} // namespace specific_control

} // namespace phy_registers
