#pragma once

#include "model/BitField.hpp"

/// The two registers through which an 88E6096 in multi-chip mode is reached on the MDIO bus, and the
/// command word that both of them and the PHY command register of Global 2 understand.
namespace smi {

constexpr unsigned short commandRegister = 0;
constexpr unsigned short dataRegister = 1;

/// SMI command word.
namespace command {
constexpr BitField<unsigned short> busy(15);
constexpr BitField<unsigned short> mode(12);
constexpr unsigned short modePosition = 12;
constexpr BitField<unsigned short> operation(10, 2);
constexpr unsigned short operationPosition = 10;
constexpr unsigned short operationWidth = 2;
constexpr unsigned short writeOperation = 1;
constexpr unsigned short readOperation = 2;
constexpr BitField<unsigned short> device(5, 5);
constexpr unsigned short devicePosition = 5;
constexpr unsigned short deviceWidth = 5;
constexpr BitField<unsigned short> registerNumber(0, 5);
constexpr unsigned short registerPosition = 0;
constexpr unsigned short registerWidth = 5;
/// Frames of IEEE 802.3 clause 22.
constexpr unsigned short clause22Mode = 1;
/// What the chip's PHY writes are started with.
constexpr unsigned short phyWriteMode = 0;
} // namespace command

} // namespace smi
