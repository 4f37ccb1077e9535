#pragma once

#include "simulation/Field.hpp"

/// Addresses, fields and operation codes of a VSC7390.
namespace simulation::vitesse {

/// All ports, that of the processor included.
constexpr Field ports{"Ports", 24, 0};
constexpr std::uint32_t allPorts = ports.getMask();

/// An offset in the window.
namespace window {
constexpr Field block{"Block", 23, 14};
constexpr Field subBlock{"SubBlock", 13, 10};
constexpr Field address{"Address", 9, 2};
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
    halfDuplexGap = 0x02,
    flowControl = 0x04,
    flowControlMacHigh = 0x08,
    flowControlMacLow = 0x0C,
    maximumLength = 0x10,
    advancedMode = 0x19,
    transmitUpdate = 0x24,
    transmitQueue = 0x28,
    octetsIn = 0x50,
    octetsOut,
    packetsIn,
    broadcastMulticastIn,
    errorsIn,
    dropsIn,
    class3In,
    packetsOut,
    broadcastMulticastOut,
    errorsOut,
    dropsOut,
    class3Out,
    classifierDrop = 0x6E,
    classifierLayer2 = 0x6F,
    classifierUserPriority = 0x75,
    classifierVlan = 0x79,
    classifierPortVlan = 0x7A,
    flowControlWatermarks = 0xDE,
    poolControl = 0xDF,
    egressWatermarks = 0xE0,
};
constexpr Field reset{"PORT_RST", 29};
constexpr Field transmitEnable{"TX_EN", 28};
constexpr Field fullDuplex{"FDX", 18};
constexpr Field receiveEnable{"RX_EN", 16};
constexpr Field receiveReset{"MAC_RX_RST", 5};
constexpr Field transmitReset{"MAC_TX_RST", 4};
constexpr Field clock{"CLK_SEL", 1, 0};
constexpr Field doubleTagAware{"VLAN_DBLAWR", 15};
constexpr Field tagAware{"VLAN_AWR", 14};

constexpr Field dropGroupSource{"DROP_MC_SMAC", 6};
constexpr Field forwardControl{"FWD_CTRL", 4};
constexpr Field forwardPause{"FWD_PAUSE", 3};
constexpr Field dropUntagged{"UNTAGGED_ENA", 2};
constexpr Field dropTagged{"TAGGED_ENA", 1};
constexpr Field dropNullAddress{"NULL_MAC", 0};
constexpr Field ignoreTag{"TCI_IGNORE_ENA", 8};
constexpr Field keepTag{"KEEP_TAG_ENA", 7};
constexpr Field cfi{"CFI", 15};
constexpr Field userPriority{"USR_PRIO", 14, 12};
constexpr Field portVid{"VID", 11, 0};

constexpr Field rewriteDscp{"DSCP_REWR_ENA", 18};
constexpr Field rewritePriority{"TX_INT_TO_USRPRIO_ENA", 17};
constexpr Field untaggedVid{"TX_UNTAGGED_VID", 15, 4};
constexpr Field untaggedVidEnable{"TX_UNTAGGED_VID_ENA", 3};
constexpr Field insertTag{"TX_INSERT_TAG", 0};
} // namespace port

namespace analyser {
enum Register : unsigned {
    stormLimit = 0x02,
    advancedLearning = 0x03,
    ipMulticastFlood = 0x04,
    vlanMask = 0x05,
    macHigh = 0x06,
    macLow = 0x07,
    stationMoved = 0x08,
    ageFilter = 0x09,
    events = 0x0A,
    countMask = 0x0B,
    countValue = 0x0C,
    learnMask = 0x0D,
    unicastFlood = 0x0E,
    multicastFlood = 0x0F,
    receiveMask = 0x10,
    aggregationControl = 0x20,
    aggregationMasks = 0x30,
    destinationMasks = 0x40,
    sourceMasks = 0x80,
    captureEnable = 0xA0,
    macAccess = 0xB0,
    macIndex = 0xC0,
    vlanAccess = 0xD0,
    vlanIndex = 0xE0,
    ageControl = 0xF0,
};
constexpr unsigned numberOfAggregationMasks = 16;
constexpr unsigned numberOfDestinationMasks = 64;
/// Those of the ports, the processor's and seven that no port uses.
constexpr unsigned numberOfSourceMasks = 32;
constexpr Field refusedNotLearnt{"VLAN_CHK", 25};
/// Of a source mask, beside its ports.
constexpr Field cpuCopy{"CPU_COPY", 27};
constexpr Field mirror{"MIRROR", 26};
} // namespace analyser

namespace vlan {
enum Command : unsigned { idle = 0, readEntry = 1, writeEntry = 2, clearTable = 3 };
constexpr Field learnDisabled{"LEARN_DISABLED", 30};
constexpr Field mirror{"VLAN_MIRROR", 29};
constexpr Field sourceCheck{"VLAN_SRC_CHECK", 28};
constexpr Field mask{"Ports", 26, 2};
constexpr Field command{"CMD", 1, 0};
} // namespace vlan

namespace mac {
enum Command : unsigned {
    idle = 0,
    learnEntry = 1,
    forgetEntry = 2,
    ageTable = 3,
    flushTable = 4,
    clearTable = 5,
    readEntry = 6,
    writeEntry = 7,
};
constexpr Field cpuCopy{"CPU_COPY", 14};
constexpr Field forwardKill{"FWD_KILL", 13};
constexpr Field ignoreVlan{"IGNORE_VLAN", 12};
constexpr Field aged{"AGED_FLAG", 11};
constexpr Field valid{"VALID", 10};
constexpr Field locked{"LOCKED", 9};
constexpr Field destination{"DEST_IDX", 8, 3};
constexpr Field command{"CMD", 2, 0};

constexpr Field vid{"VID", 27, 16};
constexpr Field highBytes{"Mac01", 15, 0};

constexpr Field shadow{"SHADOW", 13};
constexpr Field bucket{"Bucket", 12, 11};
constexpr Field row{"Row", 10, 0};
} // namespace mac

namespace mii {
enum Register : unsigned { status = 0x0, command = 0x1, data = 0x2, prescaler = 0x3 };
constexpr Field busy{"BUSY", 3};
constexpr Field readPending{"ReadPending", 2};
constexpr Field writePending{"WritePending", 1};
constexpr Field read{"Read", 26};
constexpr Field phy{"PHY", 25, 21};
constexpr Field address{"Register", 20, 16};
constexpr Field value{"Data", 15, 0};
constexpr Field failure{"FAILURE", 16};
constexpr Field withoutPreamble{"NoPreamble", 6};
/// The controller that has the PHYs.
constexpr unsigned controllerOfPhys = 1;
} // namespace mii

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
constexpr Field masterReset{"MASTER_RESET", 0};
constexpr Field dataReady{"DataReady", 4};
constexpr Field revision{"Revision", 31, 28};
constexpr Field product{"Product", 27, 12};
constexpr Field identifierLow{"Other", 11, 0};
constexpr unsigned productNumber = 0x7390;
} // namespace system

} // namespace simulation::vitesse
