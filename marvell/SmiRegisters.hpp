#pragma once

#include "model/BitField.hpp"

/// The two registers through which an 88E6096 in multi-chip mode is reached on the MDIO bus, and the
/// command word that the first of them and the PHY command register of Global 2 take.
namespace smi {

constexpr unsigned short commandRegister = 0;
constexpr unsigned short dataRegister = 1;

/// SMI command word.
namespace command {
constexpr BitField<unsigned short> busy(15);
constexpr BitField<unsigned short> mode(12);
constexpr BitField<unsigned short> operation(10, 2);
constexpr unsigned short writeOperation = 1;
constexpr unsigned short readOperation = 2;
constexpr BitField<unsigned short> device(5, 5);
constexpr BitField<unsigned short> registerNumber(0, 5);
/// Frames of IEEE 802.3 clause 22.
constexpr unsigned short clause22Mode = 1;
/// On purpose, PHY writes are started with another mode than all other commands.
constexpr unsigned short phyWriteMode = 0;
} // namespace command

} // namespace smi
