#pragma once

#include "model/BitField.hpp"

/// The VSC7390's MII management controllers (IEEE 802.3 clause 22), one sub-block each.
namespace vsc7390::mii_management {

constexpr unsigned short block = 3;

enum Address : unsigned short {
    status = 0x0,
    command = 0x1,
    data = 0x2,
};

using Field = BitField<unsigned int>;

namespace status_bits {
constexpr Field busy(2);
} // namespace status_bits

namespace command_bits {
constexpr Field read(26);
constexpr Field phyAddress(21, 5);
constexpr Field registerAddress(16, 5);
constexpr Field data(0, 16);
} // namespace command_bits

namespace data_bits {
constexpr Field noReply(16);
constexpr Field data(0, 16);
} // namespace data_bits

} // namespace vsc7390::mii_management
