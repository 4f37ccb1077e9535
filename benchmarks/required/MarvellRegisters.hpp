#pragma once

/// Registers, fields and command words of the 88E6096 and of the MAC's MDIO master, as its data sheet has
/// them and not as the driver does.
namespace required::marvell {

// The MAC.
constexpr unsigned miiCommand = 0x10;
constexpr unsigned miiData = 0x14;
constexpr unsigned miiStatus = 0x18;
constexpr unsigned macControl = 0x20;
constexpr unsigned mdioClock = 0x3E00;
constexpr unsigned miiRead = 0x8000;
constexpr unsigned miiWrite = 0x4000;
constexpr unsigned macBusy = 0x0001;

// The chip on the MDIO bus.
constexpr unsigned smiCommand = 0;
constexpr unsigned smiData = 1;
constexpr unsigned smiRead = 0x9800;
constexpr unsigned smiWrite = 0x9400;
constexpr unsigned phyRead = 0x9800;
constexpr unsigned phyWrite = 0x8400;
constexpr unsigned busy = 0x8000;
constexpr unsigned word = 0xFFFF;

// Its units.
constexpr unsigned ports = 0x10;
constexpr unsigned global1 = 0x1B;
constexpr unsigned global2 = 0x1C;

// Global 1 and 2.
constexpr unsigned vtuFid = 0x02;
constexpr unsigned vtuSid = 0x03;
constexpr unsigned vtuOperation = 0x05;
constexpr unsigned vtuVid = 0x06;
constexpr unsigned vtuData = 0x07;
constexpr unsigned atuControl = 0x0A;
constexpr unsigned statisticsOperation = 0x1D;
constexpr unsigned counterHigh = 0x1E;
constexpr unsigned counterLow = 0x1F;
constexpr unsigned phyCommand = 0x18;
constexpr unsigned phyData = 0x19;
constexpr unsigned flushAll = 0x9000;
constexpr unsigned loadVtu = 0xB000;
constexpr unsigned nextVtu = 0xC000;
constexpr unsigned loadStu = 0xD000;
constexpr unsigned nextStu = 0xE000;
constexpr unsigned vidValid = 0x1000;
constexpr unsigned vidField = 0x0FFF;
constexpr unsigned highestSid = 63;
constexpr unsigned memberUntagged = 1;
constexpr unsigned memberTagged = 2;
constexpr unsigned notMember = 3;
constexpr unsigned stateForwarding = 3;

// A port and its PHY.
constexpr unsigned portStatus = 0x00;
constexpr unsigned physicalControl = 0x01;
constexpr unsigned switchIdentifier = 0x03;
constexpr unsigned portControl = 0x04;
constexpr unsigned vlanMap = 0x06;
constexpr unsigned defaultVlan = 0x07;
constexpr unsigned portControl2 = 0x08;
constexpr unsigned forceDefaultVid = 0x1000;
constexpr unsigned secureMode = 0x0C00;
constexpr unsigned phyPolling = 0x1000;
constexpr unsigned linkForced = 0x10;
constexpr unsigned linkUp = 0x20;
constexpr unsigned pauseForcedOn = 0xC0;
constexpr unsigned duplexForcedFull = 0x0C;
constexpr unsigned speedField = 0x03;
constexpr unsigned phyControl = 0;
constexpr unsigned phySpecificControl = 16;
constexpr unsigned phyReset = 0x8000;
constexpr unsigned phySpeedLow = 0x2000;
constexpr unsigned phyPowerDown = 0x0800;
constexpr unsigned phyFullDuplex = 0x0100;
constexpr unsigned phySpeedHigh = 0x0040;
constexpr unsigned mdixMode = 0x0030;
constexpr unsigned mdixForced = 0x0010;

// Statistics.
constexpr unsigned capture = 5;
constexpr unsigned readCaptured = 4;
constexpr unsigned counters = 32;
constexpr unsigned inDiscardsLow = 0x10;
constexpr unsigned outFiltered = 0x13;

} // namespace required::marvell
