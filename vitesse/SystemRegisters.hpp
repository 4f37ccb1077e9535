#pragma once

#include "model/BitField.hpp"

/// The VSC7390's parallel bus and its system block.
namespace vsc7390 {

/// The window that the board maps the chip into.
namespace parallel_bus {
constexpr unsigned int physicalAddress = 0xF3000000;
constexpr unsigned int mappedSize = 0x1000000;

/// Byte offset of a register in the window. Parts that are too large spill into their neighbours.
constexpr unsigned int offsetOf(unsigned int block, unsigned int subBlock, unsigned int address) {
    return address << 2 | subBlock << 10 | block << 14;
}

/// Blocks whose registers are read at once; those of all others are fetched first.
constexpr unsigned short captureBlock = 4;
} // namespace parallel_bus

namespace system {
constexpr unsigned short block = 7;
constexpr unsigned short subBlock = 0;

enum Address : unsigned short {
    busSetUp = 0x02,
    chipIdentification = 0x18,
    readData = 0x2C,
    readStatus = 0x30,
};

namespace bus_set_up {
/// Values are 32 bits in the processor's byte order.
constexpr unsigned int value = 12;
} // namespace bus_set_up

namespace read_status {
constexpr BitField<unsigned int> ready(4);
} // namespace read_status

namespace chip_identification {
constexpr BitField<unsigned int> productNumber(12, 16);
constexpr unsigned int productVsc7390 = 0x7390;
} // namespace chip_identification
} // namespace system

} // namespace vsc7390
