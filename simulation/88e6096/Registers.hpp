#pragma once

#include "simulation/Field.hpp"

/// Addresses, fields and operation codes of an 88E6096.
namespace simulation::marvell {

/// Addresses of the internal devices.
constexpr unsigned firstPortDevice = 0x10;
constexpr unsigned global1Device = 0x1B;
constexpr unsigned global2Device = 0x1C;

constexpr unsigned bitsPerRegister = 16;

/// What is read where no PHY answers.
constexpr unsigned absent = 0xFFFF;

/// The busy bit is the same in all command registers, the operation field in those of Global 1.
constexpr Field busy{"Busy", 15};
constexpr Field globalOperation{"Operation", 14, 12};

/// The registers on the MDIO bus, and the command register for the PHYs.
namespace smi {
enum Register : unsigned { command = 0x00, data = 0x01 };
enum Operation : unsigned { write = 1, read = 2 };
constexpr Field operation{"SMIOp", 11, 10};
constexpr Field device{"PHY", 9, 5};
constexpr Field address{"Register", 4, 0};
} // namespace smi

namespace port {
enum Register : unsigned {
    status = 0x00,
    physicalControl = 0x01,
    switchIdentifier = 0x03,
    portControl = 0x04,
    portControl1 = 0x05,
    portBasedVlanMap = 0x06,
    defaultVlan = 0x07,
    portControl2 = 0x08,
    jamControl = 0x02,
    egressRateControl1 = 0x09,
    egressRateControl2 = 0x0A,
    associationVector = 0x0B,
    atuControl = 0x0C,
    priorityOverride = 0x0D,
    policyControl = 0x0E,
    etherType = 0x0F,
    inDiscardsLow = 0x10,
    inDiscardsHigh = 0x11,
    inFiltered = 0x12,
    outFiltered = 0x13,
    priorityMapLow = 0x18,
    priorityMapHigh = 0x19,
};
constexpr Field phyDetect{"PHYDetect", 12};
constexpr Field link{"Link", 11};
constexpr Field duplex{"Duplex", 10};
constexpr Field speed{"Speed", 9, 8};

constexpr Field linkValue{"LinkValue", 5};
constexpr Field forcedLink{"ForcedLink", 4};
constexpr Field duplexValue{"DpxValue", 3};
constexpr Field forcedDuplex{"ForcedDpx", 2};
constexpr Field forceSpeed{"ForceSpd", 1, 0};
constexpr unsigned speedNotForced = 3;

constexpr Field product{"Product", 15, 4};
constexpr Field revision{"Revision", 3, 0};
constexpr unsigned productNumber = 0x098;

constexpr Field saFiltering{"SAFiltering", 15, 14};
constexpr Field egressMode{"EgressMode", 13, 12};
constexpr Field header{"Header", 11};
constexpr Field frameMode{"FrameMode", 9, 8};
constexpr Field vlanTunnel{"VLANTunnel", 7};
constexpr Field egressFloods{"EgressFloods", 3, 2};
constexpr Field state{"PortState", 1, 0};
enum State : unsigned { disabled = 0, blocking = 1, learning = 2, forwarding = 3 };

constexpr Field trunkPort{"TrunkPort", 14};
constexpr Field trunkId{"TrunkID", 11, 8};
constexpr Field fidHigh{"FIDHigh", 7, 0};

constexpr Field fidLow{"FIDLow", 15, 12};
constexpr Field vlanTable{"VLANTable", 10, 0};

constexpr Field defaultPriority{"DefaultPriority", 15, 13};
constexpr Field forceDefaultVid{"ForceDefaultVID", 12};
constexpr Field defaultVid{"DefaultVID", 11, 0};

constexpr Field ignoreFcs{"IgnoreFCS", 15};
constexpr Field mode8021Q{"802.1QMode", 11, 10};
enum Mode8021Q : unsigned { off = 0, fallback = 1, check = 2, secure = 3 };
constexpr Field discardTagged{"DiscardTagged", 9};
constexpr Field discardUntagged{"DiscardUntagged", 8};
constexpr Field mapDa{"MapDA", 7};

constexpr Field lockedPort{"LockedPort", 13};
} // namespace port

namespace global1 {
enum Register : unsigned {
    status = 0x00,
    atuFid = 0x01,
    vtuFid = 0x02,
    vtuSid = 0x03,
    control = 0x04,
    vtuOperation = 0x05,
    vtuVid = 0x06,
    vtuData0 = 0x07,
    vtuData1 = 0x08,
    vtuData2 = 0x09,
    atuControl = 0x0A,
    atuOperation = 0x0B,
    atuData = 0x0C,
    atuMac01 = 0x0D,
    atuMac23 = 0x0E,
    atuMac45 = 0x0F,
    ipPriority0 = 0x10,
    ieeePriority = 0x18,
    coreTagType = 0x19,
    monitorControl = 0x1A,
    totalFreeCounter = 0x1B,
    control2 = 0x1C,
    statsOperation = 0x1D,
    statsHigh = 0x1E,
    statsLow = 0x1F,
};
constexpr Field switchMode{"SWMode", 13, 12};
constexpr unsigned cpuAttached = 0;
constexpr unsigned standAlone = 2;
constexpr Field statsDone{"StatsDone", 6};
constexpr Field vtuProblem{"VTUProb", 5};
constexpr Field vtuDone{"VTUDone", 4};
constexpr Field atuDone{"ATUDone", 2};
constexpr Field atuProblem{"ATUProb", 3};
constexpr Field softwareReset{"SWReset", 15};
constexpr Field maxFrame{"MaxFrame", 10};
constexpr Field cpuDestination{"CPUDest", 7, 4};
constexpr Field ageTime{"AgeTime", 11, 4};
constexpr unsigned secondsPerAgeUnit = 15;
} // namespace global1

namespace global2 {
enum Register : unsigned {
    managementEnable2x = 0x02,
    managementEnable0x = 0x03,
    switchManagement = 0x05,
    deviceMapping = 0x06,
    trunkMask = 0x07,
    trunkMapping = 0x08,
    ingressRateCommand = 0x09,
    ingressRateData = 0x0A,
    crossChipAddress = 0x0B,
    crossChipData = 0x0C,
    switchMac = 0x0D,
    atuStatistics = 0x0E,
    priorityOverride = 0x0F,
    eepromCommand = 0x14,
    eepromData = 0x15,
    smiPhyCommand = 0x18,
    smiPhyData = 0x19,
};
constexpr Field reservedToCpu{"RSVD2CPU", 3};
/// In the registers that lead to a table of pointers: 1 writes the entry, 0 only says which one is read.
constexpr Field update{"Update", 15};
constexpr Field trunkMaskNumber{"TrunkMaskNum", 14, 12};
constexpr Field hashTrunk{"HashTrunk", 11};
constexpr Field trunkPorts{"TrunkMask", 10, 0};
constexpr Field trunkId{"TrunkID", 14, 11};
constexpr Field trunkMembers{"TrunkMap", 10, 0};
} // namespace global2

namespace vtu {
enum Operation : unsigned {
    flushAll = 1,
    vtuLoad = 3,
    vtuGetNext = 4,
    stuLoad = 5,
    stuGetNext = 6,
    getViolation = 7,
};
constexpr Field memberViolation{"MemberViolation", 6};
constexpr Field missViolation{"MissViolation", 5};
constexpr Field sourcePort{"SPID", 3, 0};
constexpr Field valid{"Valid", 12};
constexpr Field vid{"VID", 11, 0};
constexpr Field priorityOverride{"VIDPriOverride", 15, 12};

enum Member : unsigned { unmodified = 0, untagged = 1, tagged = 2, notMember = 3 };

/// Ports in ascending order, four to a data register.
constexpr unsigned portsPerRegister = 4;
constexpr Field memberTags[] = {
    {"MemberTag0", 1, 0}, {"MemberTag1", 5, 4}, {"MemberTag2", 9, 8},  {"MemberTag3", 13, 12},
    {"MemberTag4", 1, 0}, {"MemberTag5", 5, 4}, {"MemberTag6", 9, 8},  {"MemberTag7", 13, 12},
    {"MemberTag8", 1, 0}, {"MemberTag9", 5, 4}, {"MemberTag10", 9, 8},
};
constexpr Field portStates[] = {
    {"PortState0", 3, 2}, {"PortState1", 7, 6}, {"PortState2", 11, 10},  {"PortState3", 15, 14},
    {"PortState4", 3, 2}, {"PortState5", 7, 6}, {"PortState6", 11, 10},  {"PortState7", 15, 14},
    {"PortState8", 3, 2}, {"PortState9", 7, 6}, {"PortState10", 11, 10},
};
} // namespace vtu

namespace atu {
enum Operation : unsigned {
    flushAll = 1,
    flushNonStatic = 2,
    loadEntry = 3,
    getNext = 4,
    flushFid = 5,
    flushFidNonStatic = 6,
    getViolation = 7,
};
constexpr Field fullViolation{"FullViolation", 4};
constexpr Field trunk{"Trunk", 15};
constexpr Field trunkId{"TrunkID", 7, 4};
constexpr Field portVector{"PortVector", 14, 4};
constexpr Field entryState{"EntryState", 3, 0};
} // namespace atu

namespace statistics {
enum Counter : unsigned {
    inGoodOctets = 0x00,
    inBadOctets = 0x02,
    outFcsError = 0x03,
    inUnicast = 0x04,
    deferred = 0x05,
    inBroadcast = 0x06,
    inMulticast = 0x07,
    octets64 = 0x08,
    octets65 = 0x09,
    octets128 = 0x0A,
    octets256 = 0x0B,
    octets512 = 0x0C,
    octets1024 = 0x0D,
    outOctets = 0x0E,
    outUnicast = 0x10,
    excessive = 0x11,
    outMulticast = 0x12,
    outBroadcast = 0x13,
    single = 0x14,
    outPause = 0x15,
    inPause = 0x16,
    multiple = 0x17,
    inUndersize = 0x18,
    inFragments = 0x19,
    inOversize = 0x1A,
    inJabber = 0x1B,
    inRxError = 0x1C,
    inFcsError = 0x1D,
    collisions = 0x1E,
    late = 0x1F,
};
enum Operation : unsigned { flushAll = 1, flushPort = 2, readCounter = 4, capturePort = 5 };
constexpr Field histogramMode{"HistogramMode", 11, 10};
constexpr Field item{"PortOrCounter", 5, 0};
} // namespace statistics

} // namespace simulation::marvell
