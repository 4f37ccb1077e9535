#pragma once

/// The 88E6096's second set of chip-wide registers.
namespace global2 {

constexpr unsigned short device = 0x1C;

enum Register : unsigned short {
    smiPhyCommand = 0x18, ///< the SMI command word, with a PHY address as its device
    smiPhyData = 0x19,
};

} // namespace global2
