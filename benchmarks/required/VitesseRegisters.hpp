#pragma once

/// Registers, fields and command words of the VSC7390, as its data sheet has them and not as the driver does.
namespace required::vitesse {

// Blocks.
constexpr unsigned analyser = 2;
constexpr unsigned mii = 3;
constexpr unsigned capture = 4;
constexpr unsigned arbiter = 5;
constexpr unsigned system = 7;

// System.
constexpr unsigned busSetUp = 0x02;
constexpr unsigned busSetUpValue = 0x0C;
constexpr unsigned chipId = 0x18;
constexpr unsigned readData = 0x2C;
constexpr unsigned readStatus = 0x30;
constexpr unsigned readReady = 1U << 4;

// Analyser.
constexpr unsigned vlanConfiguration = 0x03;
constexpr unsigned vlanAware = 1U << 25;
constexpr unsigned vlanMask = 0x05;
constexpr unsigned macDataHigh = 0x06;
constexpr unsigned macDataLow = 0x07;
constexpr unsigned learnMask = 0x0D;
constexpr unsigned receiveMask = 0x10;
constexpr unsigned storm = 0x20;
constexpr unsigned stormValue = 0x04;
constexpr unsigned aggregationMask = 0x30;
constexpr unsigned aggregationMasks = 16;
constexpr unsigned destinationMask = 0x40;
constexpr unsigned sourceMask = 0x80;
constexpr unsigned advancedLearning = 0xA0;
constexpr unsigned advancedLearningBit = 1U << 16;
constexpr unsigned macCommand = 0xB0;
constexpr unsigned macIndex = 0xC0;
constexpr unsigned vlanCommand = 0xD0;
constexpr unsigned vlanIndex = 0xE0;
constexpr unsigned vlanCommandField = 0x03;
constexpr unsigned vlanRead = 1;
constexpr unsigned vlanWrite = 2;
constexpr unsigned vlanClear = 3;
constexpr unsigned vlanPorts = 0x1FFFFFF;
constexpr unsigned vlanPortsUsed = 0xFFFFFE;
constexpr unsigned vlanOther = 0xF8000003;
constexpr unsigned vlanFlag = 1U << 28;
constexpr unsigned macCommandField = 0x07;
constexpr unsigned macRead = 6;
constexpr unsigned macWriteGroup = 0x1E07;
constexpr unsigned macValid = 1U << 10;
constexpr unsigned buckets = 4;
constexpr unsigned rowField = 0x7FF;
constexpr unsigned threeBytes = 0xFFFFFF;

// Arbiter.
constexpr unsigned arbiterEmpty = 0x0C;
constexpr unsigned arbiterDiscard = 0x0E;

// A port.
constexpr unsigned macConfiguration = 0x00;
constexpr unsigned pauseControl = 0x04;
constexpr unsigned pauseOn = 0x000300FF;
constexpr unsigned macHigh = 0x08;
constexpr unsigned macLow = 0x0C;
constexpr unsigned longestFrame = 0x10;
constexpr unsigned normalFrame = 1536;
constexpr unsigned egressTag = 0x24;
constexpr unsigned ingressFilter = 0x6E;
constexpr unsigned ingressTag = 0x79;
constexpr unsigned ingressVid = 0x7A;
constexpr unsigned vidField = 0xFFF;
constexpr unsigned flowControl = 0xDE;
constexpr unsigned poolControl = 0xDF;
constexpr unsigned egressLimits = 0xE0;
constexpr unsigned transmit = 1U << 28;
constexpr unsigned receive = 1U << 16;
constexpr unsigned resets = 1U << 2 | 1U << 3 | 1U << 4 | 1U << 5 | 1U << 11 | 1U << 29;
constexpr unsigned clockField = 0x03;
constexpr unsigned gigabit = 1U << 17;
constexpr unsigned fullDuplex = 1U << 18;
constexpr unsigned gapField = 0x1F << 6;
constexpr unsigned seedLoad = 1U << 27;
constexpr unsigned seedField = 0xFFU << 19;

// PHYs.
constexpr unsigned controller = 1;
constexpr unsigned miiStatus = 0;
constexpr unsigned miiCommand = 1;
constexpr unsigned miiData = 2;
constexpr unsigned miiBusy = 1U << 2;
constexpr unsigned miiRead = 1U << 26;

} // namespace required::vitesse
