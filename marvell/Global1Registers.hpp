#pragma once

#include "model/BitField.hpp"

/// The 88E6096's first set of chip-wide registers: VLAN and spanning-tree tables, address ageing,
/// statistics.
namespace global1 {

constexpr unsigned short device = 0x1B;

enum Register : unsigned short {
    vtuFid = 0x02,
    vtuSid = 0x03,
    vtuOperation = 0x05,
    vtuVid = 0x06,
    vtuDataPorts0To3 = 0x07, ///< the first of three
    atuControl = 0x0A,
    statsOperation = 0x1D,
    statsCounterHigh = 0x1E,
    statsCounterLow = 0x1F,
};

using Field = BitField<unsigned short>;

namespace vtu_operation {
constexpr Field busy(15);
constexpr Field operation(12, 3);
enum Code : unsigned short {
    flushAll = 1,
    loadVtu = 3,
    getNextVtu = 4,
    loadStu = 5,
    getNextStu = 6,
};
} // namespace vtu_operation

namespace vtu_vid {
constexpr Field valid(12);
constexpr Field vid(0, 12);
/// Where a search for the entry of VLAN 0 starts.
constexpr unsigned short highestVid = 4095;
} // namespace vtu_vid

namespace vtu_sid {
/// Where a search for the entry of spanning tree 0 starts.
constexpr unsigned short highestSid = 63;
} // namespace vtu_sid

/// The staging registers of VTU and STU: three of them, a group of bits for each port.
namespace vtu_data {
constexpr unsigned short registers = 3;
constexpr unsigned short portsPerRegister = 4;
constexpr unsigned short bitsPerPort = 4;

/// How a port belongs to the VLAN of a VTU entry.
constexpr Field memberTag(unsigned short port) {
    return Field(bitsPerPort * (port % portsPerRegister), 2);
}

/// A port's state in an STU entry.
constexpr Field portState(unsigned short port) {
    return Field(memberTag(port).position + memberTag(port).width, 2);
}
} // namespace vtu_data

namespace atu_control {
constexpr Field ageTime(4, 8);
constexpr unsigned short secondsPerUnit = 15;
constexpr unsigned short longestAgeTime = 255;
} // namespace atu_control

namespace stats_operation {
constexpr Field busy(15);
constexpr Field operation(12, 3);
constexpr Field bank(6, 4);
constexpr Field pointer(0, 6); ///< a port or a counter
} // namespace stats_operation

} // namespace global1
