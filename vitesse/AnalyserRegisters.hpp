#pragma once

#include <cstdint>

#include "model/BitField.hpp"

/// The VSC7390's frame analyser: VLAN table, MAC table, and the masks that decide where frames go.
namespace vsc7390::analyser {

constexpr unsigned short block = 2;
constexpr unsigned short subBlock = 0;

enum Address : unsigned short {
    advancedLearning = 0x03,
    vlanMask = 0x05, ///< ports whose frames must come from a member of their VLAN
    macDataHigh = 0x06,
    macDataLow = 0x07,
    learnMask = 0x0D,
    receiveMask = 0x10,
    setUp = 0x20,
    aggregationMasks = 0x30,
    destinationMasks = 0x40,
    sourceMasks = 0x80,
    captureEnable = 0xA0,
    macAccess = 0xB0,
    macTableIndex = 0xC0,
    vlanAccess = 0xD0,
    vlanTableIndex = 0xE0,
};

using Field = BitField<unsigned int>;

/// Bits in a word of ports; a port beyond it has none.
constexpr unsigned int bitsOfPortMask = 32;

/// A port's bit in a word of ports.
constexpr unsigned int portBit(unsigned int port) {
    return port < bitsOfPortMask ? 1U << port : 0U;
}

namespace advanced_learning {
/// Frames that the VLAN check refuses are not learned from.
constexpr Field notFromRefusedFrames(25);
} // namespace advanced_learning

namespace set_up {
constexpr unsigned int value = 0x00000004;
} // namespace set_up

namespace capture_enable {
constexpr Field enable(16);
} // namespace capture_enable

namespace mac_data_high {
constexpr Field vid(16, 16);
/// Of a multicast entry: the ports of these numbers.
constexpr Field ports16To23(8, 8);
constexpr Field ports8To15(0, 8);
} // namespace mac_data_high

namespace mac_data_low {
/// Of a multicast entry: the ports of these numbers, above the three low bytes of the address.
constexpr Field ports0To7(24, 8);
constexpr Field byte2(16, 8);
constexpr Field byte1(8, 8);
constexpr Field byte0(0, 8);
constexpr Field lowBytes(0, 24);
/// The top three bytes of every IPv4 multicast address (RFC 1112, 6.4), the last one on the wire first.
constexpr unsigned char multicastPrefix[3] = {0x5E, 0x00, 0x01};
} // namespace mac_data_low

/// A group's ports in an entry.
namespace multicast_ports {
constexpr Field ports16To23(16, 8);
constexpr Field ports8To15(8, 8);
constexpr Field ports0To7(0, 8);
} // namespace multicast_ports

namespace mac_access {
constexpr Field ignoreVlan(12);
constexpr Field aged(11);
constexpr Field valid(10);
constexpr Field locked(9);
constexpr Field command(0, 3);
/// Flags of a forwarded multicast group.
constexpr unsigned int multicastFlags = ignoreVlan.mask() | aged.mask() | valid.mask() | locked.mask();
} // namespace mac_access

namespace mac_table_index {
constexpr Field bucket(11, 2);
constexpr Field row(0, 11);
} // namespace mac_table_index

/// The pieces of a 48-bit address and a VLAN id that choose a row of the MAC table together.
namespace mac_hash {
using Piece = BitField<std::uint64_t>;
constexpr Piece bits0To10(0, 11);
constexpr Piece bits11To21(11, 11);
constexpr Piece bits22To32(22, 11);
constexpr Piece bits33To43(33, 11);
constexpr Piece bits44To47(44, 4);
/// Where the low bits of the VLAN id go, above the address's last four.
constexpr Piece vid(4, 6);
constexpr unsigned int bitsPerByte = 8;
} // namespace mac_hash

namespace vlan_access {
/// The VLAN's ports are checked against where a frame comes from.
constexpr Field sourceCheck(28);
constexpr Field ports(2, 25);
constexpr Field command(0, 2);
enum Command : unsigned int { idle = 0, readEntry = 1, writeEntry = 2, clearTable = 3 };
/// A table that was cleared has all ports in every entry: a mask above this one is taken as unused.
constexpr unsigned int highestUsedMask = 0xFFFFFE;
} // namespace vlan_access

} // namespace vsc7390::analyser
