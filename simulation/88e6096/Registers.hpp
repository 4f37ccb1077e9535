#pragma once

namespace simulation::marvell {

/// Where things are in an 88E6096. Bits are given as highest and lowest bit of the register.

struct BitRange {
    unsigned high;
    unsigned low;
};

/// Addresses of the internal devices.
constexpr unsigned firstPortDevice = 0x10;
constexpr unsigned global1Device = 0x1B;
constexpr unsigned global2Device = 0x1C;

/// What all command units have in common.
constexpr unsigned busy = 15;
constexpr unsigned globalOperationHigh = 14;
constexpr unsigned globalOperationLow = 12;

namespace smi {
enum Register : unsigned { command = 0x00, data = 0x01 };
constexpr BitRange operation{11, 10};
constexpr BitRange device{9, 5};
constexpr BitRange address{4, 0};
constexpr unsigned write = 1;
constexpr unsigned read = 2;
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
    associationVector = 0x0B,
    inDiscardsLow = 0x10,
    inDiscardsHigh = 0x11,
    inFiltered = 0x12,
    outFiltered = 0x13,
};
constexpr unsigned phyDetect = 12;
constexpr unsigned link = 11;
constexpr unsigned duplex = 10;
constexpr BitRange speed{9, 8};
constexpr unsigned linkValue = 5;
constexpr unsigned forcedLink = 4;
constexpr unsigned duplexValue = 3;
constexpr unsigned forcedDuplex = 2;
constexpr BitRange forceSpeed{1, 0};
constexpr unsigned speedNotForced = 3;
constexpr unsigned product = 0x098;
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
    statsOperation = 0x1D,
    statsHigh = 0x1E,
    statsLow = 0x1F,
};
constexpr unsigned statsDone = 6;
constexpr unsigned vtuProblem = 5;
constexpr unsigned vtuDone = 4;
constexpr unsigned atuDone = 2;
constexpr BitRange vid{11, 0};
constexpr unsigned valid = 12;
constexpr BitRange priorityOverride{15, 12};
constexpr BitRange ageTime{11, 4};
constexpr unsigned secondsPerAgeUnit = 15;
} // namespace global1

namespace global2 {
enum Register : unsigned {
    managementEnable2x = 0x02,
    managementEnable0x = 0x03,
    switchManagement = 0x05,
    smiPhyCommand = 0x18,
    smiPhyData = 0x19,
};
} // namespace global2

namespace phy {
enum Register : unsigned { control = 0, identifier1 = 2, identifier2 = 3, mdiControl = 16 };
constexpr unsigned reset = 15;
constexpr unsigned speedLow = 13;
constexpr unsigned autoNegotiation = 12;
constexpr unsigned powerDown = 11;
constexpr unsigned restartNegotiation = 9;
constexpr unsigned duplex = 8;
constexpr unsigned speedHigh = 6;
} // namespace phy

/// What is read where no PHY answers.
constexpr unsigned absent = 0xFFFF;

} // namespace simulation::marvell
