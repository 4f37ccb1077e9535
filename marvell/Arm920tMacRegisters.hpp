#pragma once

#include "model/BitField.hpp"

/// Registers of the ARM920T SoC's Ethernet MAC that drive its MDIO master: offsets in bytes, 32 bits
/// each.
namespace arm920t_mac {

constexpr unsigned int physicalAddress = 0x80010000;
constexpr unsigned int mappedSize = 0x30;

constexpr unsigned int miiCommandOffset = 0x10;
constexpr unsigned int miiDataOffset = 0x14;
constexpr unsigned int miiStatusOffset = 0x18;
constexpr unsigned int macControlOffset = 0x20;

/// MII command: the frame of IEEE 802.3 clause 22 as the MAC takes it.
namespace mii_command {
constexpr BitField<unsigned short> operation(14, 2);
constexpr unsigned short readOperation = 2;
constexpr unsigned short writeOperation = 1;
constexpr BitField<unsigned short> phyAddress(5, 5);
constexpr BitField<unsigned short> registerNumber(0, 5);
/// Bits of a register number beyond clause 22; a read moves them up by `registerHighPosition`.
constexpr BitField<unsigned short> registerHigh(5, 2);
constexpr unsigned short registerHighPosition = 3;
} // namespace mii_command

namespace mii_data {
constexpr BitField<unsigned int> data(0, 16);
} // namespace mii_data

namespace mii_status {
constexpr BitField<unsigned short> busy(0);
} // namespace mii_status

namespace mac_control {
/// The divider of the management clock.
constexpr BitField<unsigned int> mdioClock(9, 5);
} // namespace mac_control

} // namespace arm920t_mac
