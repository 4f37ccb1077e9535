#pragma once

#include <cstdint>

#include "simulation/Bits.hpp"

namespace simulation::vitesse {

/// Where things are in a VSC7390. Bits are given as highest and lowest bit of the register.

struct BitRange {
    unsigned high;
    unsigned low;
};

constexpr std::uint32_t fieldOf(std::uint32_t word, BitRange range) {
    return bitsOf(word, range.high, range.low);
}

constexpr std::uint32_t placedAt(std::uint32_t value, BitRange range) {
    return placed(value, range.high, range.low);
}

constexpr std::uint32_t bit(unsigned number) {
    return maskOf(number, number);
}

/// All ports, that of the processor included.
constexpr BitRange ports{24, 0};
constexpr std::uint32_t allPorts = maskOf(ports.high, ports.low);

/// An offset in the window.
namespace window {
constexpr BitRange block{23, 14};
constexpr BitRange subBlock{13, 10};
constexpr BitRange address{9, 2};
} // namespace window

namespace block {
enum Block : unsigned {
    lowPorts = 1,
    analyser = 2,
    memoryAndMii = 3,
    capture = 4,
    arbiter = 5,
    highPorts = 6,
    system = 7,
};
constexpr unsigned portsInLow = 16;
constexpr unsigned portsInHigh = 8;
constexpr unsigned captureSubBlocks = 16;
constexpr unsigned miiControllers = 2;
constexpr unsigned memorySubBlock = 2;
} // namespace block

namespace port {
enum Register : unsigned {
    macConfig = 0x00,
    flowControl = 0x04,
    flowControlMacHigh = 0x08,
    flowControlMacLow = 0x0C,
    maximumLength = 0x10,
    transmitUpdate = 0x24,
    octetsIn = 0x50,
    packetsIn = 0x52,
    classifierDrop = 0x6E,
    classifierVlan = 0x79,
    classifierPortVlan = 0x7A,
    flowControlWatermarks = 0xDE,
    poolControl = 0xDF,
    egressWatermarks = 0xE0,
};
constexpr unsigned reset = 29;
constexpr unsigned transmitEnable = 28;
constexpr unsigned fullDuplex = 18;
constexpr unsigned receiveEnable = 16;
constexpr unsigned receiveReset = 5;
constexpr unsigned transmitReset = 4;
constexpr BitRange clock{1, 0};
} // namespace port

namespace analyser {
enum Register : unsigned {
    advancedLearning = 0x03,
    ipMulticastFlood = 0x04,
    vlanMask = 0x05,
    macHigh = 0x06,
    macLow = 0x07,
    learnMask = 0x0D,
    unicastFlood = 0x0E,
    multicastFlood = 0x0F,
    receiveMask = 0x10,
    setUp = 0x20,
    aggregationMasks = 0x30,
    destinationMasks = 0x40,
    sourceMasks = 0x80,
    captureEnable = 0xA0,
    macAccess = 0xB0,
    macIndex = 0xC0,
    vlanAccess = 0xD0,
    vlanIndex = 0xE0,
};
constexpr unsigned numberOfAggregationMasks = 16;
constexpr unsigned numberOfDestinationMasks = 64;
/// Those of the ports, the processor's and seven that no port uses.
constexpr unsigned numberOfSourceMasks = 32;
constexpr unsigned learnFromMembersOnly = 25;
} // namespace analyser

namespace vlan {
constexpr BitRange command{1, 0};
constexpr BitRange mask{26, 2};
constexpr unsigned sourceCheck = 28;
constexpr unsigned mirror = 29;
constexpr unsigned learnDisabled = 30;
} // namespace vlan

namespace mac {
constexpr BitRange command{2, 0};
constexpr BitRange destination{8, 3};
constexpr unsigned locked = 9;
constexpr unsigned valid = 10;
constexpr unsigned aged = 11;
constexpr unsigned ignoreVlan = 12;
constexpr unsigned forwardKill = 13;
constexpr unsigned cpuCopy = 14;
constexpr BitRange vid{27, 16};
constexpr BitRange highBytes{15, 0};
constexpr BitRange row{10, 0};
constexpr BitRange bucket{12, 11};
constexpr unsigned shadow = 13;
} // namespace mac

namespace mii {
enum Register : unsigned { status = 0x0, command = 0x1, data = 0x2, prescaler = 0x3 };
constexpr unsigned busy = 3;
constexpr unsigned readPending = 2;
constexpr unsigned writePending = 1;
constexpr unsigned read = 26;
constexpr BitRange phy{25, 21};
constexpr BitRange address{20, 16};
constexpr BitRange value{15, 0};
constexpr unsigned failure = 16;
constexpr unsigned withoutPreamble = 6;
/// The controller that has the PHYs.
constexpr unsigned controllerOfPhys = 1;
} // namespace mii

namespace phy {
enum Register : unsigned { control = 0, status = 1, identifier1 = 2, identifier2 = 3 };
constexpr unsigned numberOfRegisters = 32;
constexpr unsigned reset = 15;
constexpr unsigned restartNegotiation = 9;
} // namespace phy

namespace arbiter {
enum Register : unsigned { empty = 0x0C, discard = 0x0E };
} // namespace arbiter

namespace system {
enum Register : unsigned {
    busSetUp = 0x02,
    globalReset = 0x14,
    chipIdentifier = 0x18,
    indirectData = 0x2C,
    indirectStatus = 0x30,
};
constexpr unsigned dataReady = 4;
constexpr BitRange revision{31, 28};
constexpr BitRange product{27, 12};
constexpr BitRange identifierLow{11, 0};
constexpr unsigned productNumber = 0x7390;
} // namespace system

} // namespace simulation::vitesse
