#include "benchmarks/required/Marvell.hpp"

#include <unistd.h>

#include <ctime>

#include "benchmarks/required/MarvellRegisters.hpp"

namespace required::marvell {

namespace {

constexpr useconds_t pause = 100;

bool isSecondOver(timespec const& start) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec - start.tv_sec - (now.tv_nsec < start.tv_nsec ? 1 : 0) >= 1;
}

// The loop that the MAC is given before each look at it.
inline void idle() {
    constexpr int steps = 1000;
    for (int volatile i = 0; i < steps; ++i) {
    }
}

void waitForMac(HardwareMapping const& mac) {
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    for (;;) {
        unsigned status = 0;
        idle();
        mac.get(miiStatus, status);
        if ((status & macBusy) == 0 || isSecondOver(start)) {
            return;
        }
        usleep(pause);
    }
}

unsigned readMdio(Chip const& chip, unsigned number) {
    waitForMac(chip.mac);
    chip.mac.set(miiCommand, miiRead | chip.address << 5 | number);
    waitForMac(chip.mac);
    unsigned value = 0;
    chip.mac.get(miiData, value);
    return value & word;
}

void writeMdio(Chip const& chip, unsigned number, unsigned value) {
    waitForMac(chip.mac);
    chip.mac.set(miiData, value);
    chip.mac.set(miiCommand, miiWrite | chip.address << 5 | number);
    waitForMac(chip.mac);
}

void waitForSmi(Chip const& chip) {
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    for (;;) {
        readMdio(chip, smiCommand);
        if ((readMdio(chip, smiCommand) & busy) == 0 || isSecondOver(start)) {
            return;
        }
        usleep(pause);
    }
}

template <typename Change> void modify(Chip const& chip, unsigned device, unsigned number, Change change) {
    write(chip, device, number, change(read(chip, device, number)));
}

/// A port's register and the control register of its PHY.
template <typename Change>
void modifyWithPhy(Chip const& chip, unsigned port, unsigned number, Change change) {
    unsigned value = read(chip, ports + port, number);
    unsigned phy = readPhy(chip, port, phyControl);
    change(value, phy);
    write(chip, ports + port, number, value);
    writePhy(chip, port, phyControl, phy);
}

void waitForTables(Chip const& chip) {
    double elapsed = 0.0;
    time_t const start = time(nullptr);
    for (;;) {
        bool const isBusy = (read(chip, global1, vtuOperation) & busy) != 0;
        if (1.0 <= elapsed) {
            return;
        }
        elapsed = difftime(time(nullptr), start);
        if (!isBusy) {
            return;
        }
    }
}

unsigned shiftOf(unsigned port) {
    return 4 * (port % 4);
}

void stage(Chip const& chip, unsigned port, unsigned code, unsigned places) {
    modify(chip, global1, vtuData + port / 4, [=](unsigned value) {
        return ((value & ~(3U << shiftOf(port))) | code << (shiftOf(port) + places)) & word;
    });
}

void loadVlan(Chip const& chip, unsigned vid) {
    waitForTables(chip);
    write(chip, global1, vtuFid, vid);
    write(chip, global1, vtuSid, vid);
    write(chip, global1, vtuVid, (vid & vidField) | vidValid);
    waitForTables(chip);
    write(chip, global1, vtuOperation, loadVtu);
}

bool findVlan(Chip const& chip, unsigned vid) {
    waitForTables(chip);
    write(chip, global1, vtuVid, vid == 0 ? vidField : vid - 1);
    write(chip, global1, vtuOperation, nextVtu);
    unsigned const found = read(chip, global1, vtuVid);
    return (found & vidField) == vid && (found & vidValid) != 0;
}

void loadSpanningTree(Chip const& chip, unsigned sid) {
    waitForTables(chip);
    write(chip, global1, vtuSid, sid);
    write(chip, global1, vtuVid, vidValid);
    waitForTables(chip);
    write(chip, global1, vtuOperation, loadStu);
}

bool findSpanningTree(Chip const& chip, unsigned sid) {
    waitForTables(chip);
    write(chip, global1, vtuSid, sid == 0 ? highestSid : sid - 1);
    write(chip, global1, vtuOperation, nextStu);
    unsigned const found = read(chip, global1, vtuSid);
    return (read(chip, global1, vtuVid) & vidValid) != 0 && found == sid;
}

void addToSpanningTree(Chip const& chip, unsigned port, unsigned sid) {
    constexpr unsigned placesOfState = 2;
    if (!findSpanningTree(chip, sid)) {
        for (unsigned other = 0; other < chip.countedPorts; ++other) {
            stage(chip, other, 0, placesOfState);
        }
        loadSpanningTree(chip, sid);
    }
    stage(chip, port, stateForwarding, placesOfState);
    loadSpanningTree(chip, sid);
}

void forceLink(Chip const& chip, unsigned port, bool up) {
    modify(chip, ports + port, physicalControl,
           [=](unsigned value) { return up ? value | linkForced | linkUp : (value | linkForced) & ~linkUp; });
}

void setSpeed(Chip const& chip, unsigned port, unsigned speed) {
    modifyWithPhy(chip, port, physicalControl, [=](unsigned& value, unsigned& phy) {
        phy = speed == 2 ? phy | phySpeedLow | phySpeedHigh : (phy | phySpeedLow) & ~phySpeedHigh;
        value = (value & ~speedField) | speed;
    });
}

void enable(Chip const& chip, unsigned port, bool up) {
    modifyWithPhy(chip, port, portControl, [=](unsigned& value, unsigned& phy) {
        phy = (up ? phy & ~phyPowerDown : phy | phyPowerDown) | phyReset;
        value = up ? value | stateForwarding : value & ~stateForwarding;
    });
}

void waitForStatistics(Chip const& chip) {
    double elapsed = 0.0;
    time_t const start = time(nullptr);
    for (;;) {
        unsigned const operation = read(chip, global1, statisticsOperation);
        if (1.0 <= elapsed) {
            return;
        }
        elapsed = difftime(time(nullptr), start);
        if ((operation & busy) == 0) {
            return;
        }
    }
}

void runStatistics(Chip const& chip, unsigned operation, unsigned pointer) {
    waitForStatistics(chip);
    write(chip, global1, statisticsOperation, busy | operation << 12 | pointer);
    waitForStatistics(chip);
}

} // namespace

std::unique_ptr<MappedSection> sectionOf(SystemLogInterface& log) {
    auto section = std::make_unique<MappedSection>("MiiAccess", log, false);
    section->map(macPhysicalAddress, macSize);
    return section;
}

unsigned openMac(HardwareMapping& mac) {
    unsigned saved = 0;
    mac.get(macControl, saved);
    mac.set(macControl, mdioClock);
    return saved;
}

void closeMac(HardwareMapping& mac, unsigned saved) {
    mac.set(macControl, saved);
}

unsigned read(Chip const& chip, unsigned device, unsigned number) {
    waitForSmi(chip);
    writeMdio(chip, smiCommand, smiRead | device << 5 | number);
    waitForSmi(chip);
    return readMdio(chip, smiData);
}

void write(Chip const& chip, unsigned device, unsigned number, unsigned value) {
    waitForSmi(chip);
    writeMdio(chip, smiData, value);
    writeMdio(chip, smiCommand, smiWrite | device << 5 | number);
}

unsigned readPhy(Chip const& chip, unsigned phy, unsigned number) {
    write(chip, global2, phyCommand, phyRead | phy << 5 | number);
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    while ((read(chip, global2, phyCommand) & busy) != 0) {
        if (isSecondOver(start)) {
            return 0;
        }
        usleep(pause);
    }
    return read(chip, global2, phyData);
}

void writePhy(Chip const& chip, unsigned phy, unsigned number, unsigned value) {
    write(chip, global2, phyData, value);
    write(chip, global2, phyCommand, phyWrite | phy << 5 | number);
}

bool isThere(Chip const& chip) {
    constexpr unsigned product = 0x098;
    return read(chip, ports, switchIdentifier) >> 4 == product;
}

void setAgeTime(Chip const& chip, unsigned seconds) {
    constexpr unsigned step = 15;
    constexpr unsigned most = 255;
    constexpr unsigned field = 0x0FF0;
    unsigned age = (seconds + step / 2) / step;
    age = age > most ? most : age == 0 && seconds != 0 ? 1 : age;
    modify(chip, global1, atuControl, [=](unsigned value) { return (value & ~field) | age << 4; });
}

void clearTables(Chip const& chip) {
    write(chip, global1, vtuOperation, flushAll);
}

void addToVlan(Chip const& chip, unsigned port, TagMembership const& vlan) {
    modify(chip, ports + port, defaultVlan, [&](unsigned value) {
        value = vlan.ingress == Ingress::addTag ? value | forceDefaultVid : value & ~forceDefaultVid;
        return vlan.ingress == Ingress::validateTag ? value : (value & ~vidField) | (vlan.vid & vidField);
    });
    if (!findVlan(chip, vlan.vid)) {
        for (unsigned other = 0; other < chip.countedPorts; ++other) {
            stage(chip, other, notMember, 0);
        }
        loadVlan(chip, vlan.vid);
    }
    stage(chip, port, vlan.egress == Egress::stripTag ? memberUntagged : memberTagged, 0);
    loadVlan(chip, vlan.vid);
}

void configureVlans(Chip const& chip, PortPlan const& port) {
    for (TagMembership const& vlan : port.vlans) {
        addToVlan(chip, port.id, vlan);
        addToSpanningTree(chip, port.id, vlan.vid);
    }
    modify(chip, ports + port.id, vlanMap, [&](unsigned value) {
        for (unsigned const route : port.routes) {
            value |= 1U << route;
        }
        return value;
    });
}

void setLink(Chip const& chip, PortPlan const& port) {
    constexpr unsigned speed100 = 1;
    constexpr unsigned speed1000 = 2;
    bool const up = port.state == PortState::forwarding;
    forceLink(chip, port.id, false);
    modify(chip, ports + port.id, portStatus, [](unsigned value) { return value & ~phyPolling; });
    modify(chip, ports + port.id, physicalControl, [](unsigned value) { return value | pauseForcedOn; });
    modifyWithPhy(chip, port.id, physicalControl, [](unsigned& value, unsigned& phy) {
        value |= duplexForcedFull;
        phy |= phyFullDuplex;
    });
    setSpeed(chip, port.id, port.kind == PortKind::interlink ? speed1000 : speed100);
    forceLink(chip, port.id, up);
    enable(chip, port.id, up);
}

void configurePort(Chip const& chip, PortPlan const& port) {
    modify(chip, ports + port.id, portControl2, [](unsigned value) { return value | secureMode; });
    if (port.kind == PortKind::other) {
        return;
    }
    setLink(chip, port);
    if (port.kind == PortKind::smac) {
        unsigned const control = readPhy(chip, port.id, phySpecificControl);
        writePhy(chip, port.id, phySpecificControl, (control & ~mdixMode) | mdixForced);
    }
}

void readCounters(Chip const& chip, unsigned port) {
    runStatistics(chip, capture, port);
    for (unsigned counter = 0; counter < counters; ++counter) {
        runStatistics(chip, readCaptured, counter);
        read(chip, global1, counterLow);
        read(chip, global1, counterHigh);
    }
    for (unsigned number = inDiscardsLow; number <= outFiltered; ++number) {
        read(chip, ports + port, number);
    }
}

} // namespace required::marvell
