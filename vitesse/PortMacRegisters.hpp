#pragma once

#include <array>

#include "model/BitField.hpp"

/// Registers of one port of the VSC7390. Each port has a sub-block of its own.
namespace vsc7390::port_mac {

constexpr unsigned int numberOfPorts = 24;
/// Ports 0 to 15 are the sub-blocks of one block, the others those of another.
constexpr unsigned int firstHighPort = 16;
constexpr unsigned short blockOfLowPorts = 1;
constexpr unsigned short blockOfHighPorts = 6;

/// Where a port's registers are; of a port that the chip has.
constexpr unsigned short blockOf(unsigned int port) {
    return port < firstHighPort ? blockOfLowPorts : blockOfHighPorts;
}
constexpr unsigned short subBlockOf(unsigned int port) {
    return static_cast<unsigned short>(port < firstHighPort ? port : port - firstHighPort);
}

enum Address : unsigned short {
    macConfiguration = 0x00,
    flowControlConfiguration = 0x04,
    flowControlMacHigh = 0x08,
    flowControlMacLow = 0x0C,
    maximumLength = 0x10,
    transmitUpdateConfiguration = 0x24,
    inOctets = 0x50,
    outOctets = 0x51,
    inPackets = 0x52, ///< a write of 0 clears all counters of the port
    inBroadcastAndMulticast = 0x53,
    inErrorPackets = 0x54,
    inDrops = 0x55,
    inClass3 = 0x56,
    outPackets = 0x57,
    outBroadcastAndMulticast = 0x58,
    outErrorPackets = 0x59,
    outDrops = 0x5A,
    outClass3 = 0x5B,
    categorizerDrop = 0x6E,
    categorizerVlan = 0x79,
    categorizerPortVlan = 0x7A,
    flowControlWatermarks = 0xDE,
    miscellaneousPoolControl = 0xDF,
    egressMaxWatermarks = 0xE0,
};

using Field = BitField<unsigned int>;

namespace mac_configuration {
constexpr Field portReset(29);
constexpr Field transmitEnable(28);
constexpr Field seedLoad(27);
constexpr Field seed(19, 8);
constexpr Field fullDuplex(18);
constexpr Field gigabitMode(17);
constexpr Field receiveEnable(16);
constexpr Field vlanAware(14); ///< room for one tag in the longest frame
constexpr Field resetStage11(11);
constexpr Field interframeGap(6, 5);
constexpr Field receiveReset(5);
constexpr Field transmitReset(4);
constexpr Field resetStage3(3);
constexpr Field resetStage2(2);
constexpr Field clockSelect(0, 2);
enum Clock : unsigned int { clock1000 = 1, clock100 = 2, clock10 = 3 };

/// Everything that is held while speed and duplex change.
constexpr unsigned int allResets = portReset.mask() | resetStage11.mask() | receiveReset.mask() |
                                   transmitReset.mask() | resetStage3.mask() | resetStage2.mask();
} // namespace mac_configuration

namespace flow_control_configuration {
/// Obey pause frames, send ones with the longest pause that fits eight bits, and end them early.
constexpr unsigned int on = 0x000300FF;
constexpr unsigned int off = 0;
} // namespace flow_control_configuration

namespace flow_control_mac {
constexpr Field firstByte(16, 8);
constexpr Field secondByte(8, 8);
constexpr Field thirdByte(0, 8);
/// The address of port 0, the first byte on the wire first.
constexpr std::array<unsigned char, 6> baseAddress = {0x00, 0x01, 0xC1, 0x00, 0x00, 0x00};
} // namespace flow_control_mac

namespace transmit_update {
constexpr Field untaggedVidEnable(3);
constexpr Field insertTag(0);
} // namespace transmit_update

namespace categorizer_drop {
constexpr Field untagged(2);
constexpr Field tagged(1);
} // namespace categorizer_drop

namespace categorizer_vlan {
constexpr Field ignoreTag(8);
constexpr Field keepTag(7);
} // namespace categorizer_vlan

namespace categorizer_port_vlan {
constexpr Field portVid(0, 12);
} // namespace categorizer_port_vlan

} // namespace vsc7390::port_mac
