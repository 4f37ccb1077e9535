#pragma once

#include "model/BitField.hpp"

/// Registers of one port of the 88E6096, in the internal device of that port.
namespace port_registers {

/// Internal device of port 0; port n is n above it.
constexpr unsigned short firstDevice = 0x10;

enum Register : unsigned short {
    portStatus = 0x00,
    physicalControl = 0x01,
    switchIdentifier = 0x03,
    portControl = 0x04,
    portBasedVlanMap = 0x06,
    defaultVlan = 0x07,
    portControl2 = 0x08,
    inDiscardsLow = 0x10,
    inDiscardsHigh = 0x11,
    inFiltered = 0x12,
    outFiltered = 0x13,
};

using Field = BitField<unsigned short>;

namespace port_status {
/// The PHY polling unit follows this port's PHY.
constexpr Field phyDetect(12);
} // namespace port_status

namespace physical_control {
constexpr Field flowControlValue(7);
constexpr Field forcedFlowControl(6);
constexpr Field linkValue(5);
constexpr Field forcedLink(4);
constexpr Field duplexValue(3); ///< 1 is full
constexpr Field forcedDuplex(2);
constexpr Field forcedSpeed(0, 2); ///< 0, 1, 2 are 10, 100, 1000 Mbit/s
} // namespace physical_control

namespace switch_identifier {
constexpr Field productNumber(4, 12);
constexpr unsigned int product88E6096 = 0x098;
} // namespace switch_identifier

namespace port_control {
/// 0 disabled, 1 blocking or listening, 2 learning, 3 forwarding (IEEE 802.1D).
constexpr Field portState(0, 2);
} // namespace port_control

namespace vlan_map {
/// The bit that lets this port forward to `port`; the register ends before the numbers do.
constexpr unsigned int routeTo(unsigned int port) {
    return 1U << port;
}
} // namespace vlan_map

namespace default_vlan {
/// Every frame belongs to the default VLAN, whatever its tag says.
constexpr Field forceDefaultVid(12);
constexpr Field defaultVid(0, 12);
} // namespace default_vlan

namespace port_control_2 {
/// 0 disabled, 1 fallback, 2 check, 3 secure.
constexpr Field ieee8021QMode(10, 2);
} // namespace port_control_2

} // namespace port_registers
