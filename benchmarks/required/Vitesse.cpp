#include "benchmarks/required/Vitesse.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

#include "benchmarks/required/VitesseRegisters.hpp"

namespace required::vitesse {

namespace {

constexpr useconds_t tablePause = 100;
constexpr useconds_t drainPause = 10;
constexpr useconds_t seedPause = 2;

constexpr unsigned offsetOf(unsigned block, unsigned subBlock, unsigned address) {
    return address * 4 | subBlock << 10 | block << 14;
}

bool isSecondOver(timespec const& start) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec - start.tv_sec - (now.tv_nsec < start.tv_nsec ? 1 : 0) >= 1;
}

unsigned bitOf(unsigned port) {
    return port < 32 ? 1U << port : 0;
}

unsigned readAnalyser(Chip const& chip, unsigned address) {
    return read(chip.bus, analyser, 0, address);
}

void writeAnalyser(Chip const& chip, unsigned address, unsigned value) {
    write(chip.bus, analyser, 0, address, value);
}

unsigned readPort(Chip const& chip, unsigned port, unsigned address) {
    return read(chip.bus, port < 16 ? 1 : 6, port % 16, address);
}

void writePort(Chip const& chip, unsigned port, unsigned address, unsigned value) {
    write(chip.bus, port < 16 ? 1 : 6, port % 16, address, value);
}

void setAnalyser(Chip const& chip, unsigned address, unsigned ones, unsigned zeros) {
    writeAnalyser(chip, address, (readAnalyser(chip, address) & ~zeros) | ones);
}

void setPort(Chip const& chip, unsigned port, unsigned address, unsigned ones, unsigned zeros) {
    writePort(chip, port, address, (readPort(chip, port, address) & ~zeros) | ones);
}

void setDiscard(Chip const& chip, unsigned ones, unsigned zeros) {
    write(chip.bus, arbiter, 0, arbiterDiscard, (read(chip.bus, arbiter, 0, arbiterDiscard) & ~zeros) | ones);
}

void waitForTable(Chip const& chip, unsigned command, unsigned field) {
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    while ((readAnalyser(chip, command) & field) != 0 && !isSecondOver(start)) {
        usleep(tablePause);
    }
}

void waitForVlans(Chip const& chip) {
    waitForTable(chip, vlanCommand, vlanCommandField);
}

unsigned readVlan(Chip const& chip, unsigned vid) {
    writeAnalyser(chip, vlanIndex, vid);
    waitForVlans(chip);
    writeAnalyser(chip, vlanCommand, vlanRead);
    waitForVlans(chip);
    return readAnalyser(chip, vlanCommand);
}

void writeVlan(Chip const& chip, unsigned vid, unsigned entry) {
    writeAnalyser(chip, vlanIndex, vid);
    waitForVlans(chip);
    writeAnalyser(chip, vlanCommand, (entry & ~vlanCommandField) | vlanWrite);
}

bool runMac(Chip const& chip, unsigned command) {
    waitForTable(chip, macCommand, macCommandField);
    writeAnalyser(chip, macCommand, command);
    waitForTable(chip, macCommand, macCommandField);
    return (readAnalyser(chip, macCommand) & macValid) != 0;
}

using Mac = unsigned char[6];

void groupAddress(std::string const& text, Mac& mac) {
    unsigned numbers[4] = {};
    std::sscanf(text.c_str(), "%u.%u.%u.%u", &numbers[0], &numbers[1], &numbers[2], &numbers[3]);
    constexpr unsigned lowBits = 0x7F;
    constexpr unsigned char prefix[] = {0x5E, 0x00, 0x01};
    mac[0] = static_cast<unsigned char>(numbers[3]);
    mac[1] = static_cast<unsigned char>(numbers[2]);
    mac[2] = static_cast<unsigned char>(numbers[1] & lowBits);
    std::copy(prefix, prefix + sizeof prefix, mac + 3);
}

unsigned lowBytes(Mac const& mac) {
    return mac[0] | static_cast<unsigned>(mac[1]) << 8 | static_cast<unsigned>(mac[2]) << 16;
}

bool findGroup(Chip const& chip, Mac const& mac, unsigned vid) {
    unsigned const row = hash(mac, vid) & rowField;
    for (unsigned bucket = 0; bucket < buckets; ++bucket) {
        writeAnalyser(chip, macIndex, row | bucket << 11);
        if (runMac(chip, macRead) && (readAnalyser(chip, macDataLow) & threeBytes) == lowBytes(mac)) {
            writeAnalyser(chip, macIndex, row | bucket << 11);
            return true;
        }
    }
    return false;
}

void chooseBucket(Chip const& chip, Mac const& mac, unsigned vid) {
    if (findGroup(chip, mac, vid)) {
        return;
    }
    unsigned const row = hash(mac, vid) & rowField;
    for (unsigned bucket = 0; bucket < buckets; ++bucket) {
        writeAnalyser(chip, macIndex, row | bucket << 11);
        if (!runMac(chip, macRead)) {
            writeAnalyser(chip, macIndex, row | bucket << 11);
            return;
        }
    }
}

/// The members of a group as a mask, 0 when the chip does not know it.
unsigned groupMembers(Chip const& chip, Mac const& mac, unsigned vid) {
    if (!findGroup(chip, mac, vid)) {
        return 0;
    }
    unsigned const low = readAnalyser(chip, macDataLow);
    unsigned const high = readAnalyser(chip, macDataHigh);
    constexpr unsigned highPorts = 0xFFFF;
    unsigned const counted = chip.countedPorts < 32 ? bitOf(chip.countedPorts) - 1 : ~0U;
    return (low >> 24 | (high & highPorts) << 8) & counted;
}

void enableReceive(Chip const& chip, unsigned port, bool on) {
    unsigned const mac = readPort(chip, port, macConfiguration);
    unsigned const mask = readAnalyser(chip, receiveMask);
    writePort(chip, port, macConfiguration, on ? mac | receive : mac & ~receive);
    writeAnalyser(chip, receiveMask, on ? mask | bitOf(port) : mask & ~bitOf(port));
}

void setSpeed(Chip const& chip, unsigned port, bool isGigabit) {
    constexpr unsigned clock100 = 2;
    constexpr unsigned clock1000 = 1;
    constexpr unsigned gap100 = 17;
    constexpr unsigned gap1000 = 6;
    setPort(chip, port, macConfiguration, isGigabit ? clock1000 | gigabit : clock100, clockField | gigabit);
    setPort(chip, port, macConfiguration, (isGigabit ? gap1000 : gap100) << 6, gapField);
}

void loadSeed(Chip const& chip, unsigned port) {
    unsigned const mac = (readPort(chip, port, macConfiguration) & ~seedField) | seedLoad | port << 19;
    writePort(chip, port, macConfiguration, mac);
    usleep(seedPause);
    writePort(chip, port, macConfiguration, mac & ~seedLoad);
}

void setPause(Chip const& chip, unsigned port) {
    // The ports' addresses are 00:01:C1:00:00:00 and up; three of their bytes are written.
    constexpr unsigned highBytes = 0x0001C1;
    constexpr unsigned poolOn = 0x24000001;
    constexpr unsigned flowNormal = 0x00000C08;
    constexpr unsigned flowJumbo = 0x00000A06;
    constexpr unsigned egress = 0x0C0C0C0C;
    writePort(chip, port, macHigh, highBytes);
    writePort(chip, port, macLow, 0);
    bool const isJumbo = readPort(chip, port, longestFrame) > normalFrame;
    writePort(chip, port, poolControl, poolOn);
    writePort(chip, port, flowControl, isJumbo ? flowJumbo : flowNormal);
    writePort(chip, port, egressLimits, egress);
    writePort(chip, port, pauseControl, pauseOn);
}

bool isUp(Chip const& chip, unsigned port) {
    return (readPort(chip, port, macConfiguration) & (transmit | receive)) == (transmit | receive);
}

void updateSourceMasks(Chip const& chip) {
    for (PortPlan const& port : chip.ports) {
        unsigned mask = 0;
        if (isUp(chip, port.id)) {
            for (PortPlan const& other : chip.ports) {
                if (other.id != port.id && isUp(chip, other.id)) {
                    mask |= bitOf(other.id);
                }
            }
        }
        unsigned const destinations = readAnalyser(chip, destinationMask + port.id);
        writeAnalyser(chip, sourceMask + port.id, mask & ~destinations);
    }
}

void setIngress(Chip const& chip, unsigned port, TagMembership const& vlan) {
    constexpr unsigned tagBits = 1U << 7 | 1U << 8;
    constexpr unsigned addTagBit = 1U << 8;
    constexpr unsigned awareBit = 1U << 14;
    constexpr unsigned filterBits = 1U << 1 | 1U << 2;
    unsigned tag = readPort(chip, port, ingressTag);
    unsigned vid = readPort(chip, port, ingressVid);
    unsigned const mac = readPort(chip, port, macConfiguration);
    unsigned const filter = readPort(chip, port, ingressFilter);
    unsigned const configuration = readAnalyser(chip, vlanConfiguration);
    tag = (tag & ~tagBits) | (vlan.ingress == Ingress::addTag ? addTagBit : 0);
    vid = vlan.ingress == Ingress::validateTag ? vid : (vid & ~vidField) | (vlan.vid & vidField);
    writePort(chip, port, ingressTag, tag);
    writePort(chip, port, ingressVid, vid);
    writePort(chip, port, macConfiguration, mac | awareBit);
    writePort(chip, port, ingressFilter, filter & ~filterBits);
    writeAnalyser(chip, vlanConfiguration, configuration | vlanAware);
}

} // namespace

std::unique_ptr<MappedSection> sectionOf(SystemLogInterface& log) {
    auto section = std::make_unique<MappedSection>("VITESSE_PARALLEL_COMMUNICATION", log, false);
    section->map(physicalAddress, size);
    return section;
}

void openBus(HardwareMapping& bus) {
    bus.set(offsetOf(system, 0, busSetUp), busSetUpValue);
}

unsigned read(HardwareMapping const& bus, unsigned block, unsigned subBlock, unsigned address) {
    unsigned const offset = offsetOf(block, subBlock, address);
    unsigned value = 0;
    bus.get(offset, value);
    if (block == capture || block == system) {
        return value;
    }
    unsigned status = 0;
    time_t start = time(nullptr);
    unsigned attempts = 0;
    while ((status & readReady) == 0) {
        bus.get(offsetOf(system, 0, readStatus), status);
        if (difftime(time(nullptr), start) > 1.0) {
            bus.get(offset, value);
            start = time(nullptr);
            if (++attempts == 5) {
                return 0;
            }
        }
    }
    bus.get(offsetOf(system, 0, readData), value);
    return value;
}

void write(HardwareMapping& bus, unsigned block, unsigned subBlock, unsigned address, unsigned value) {
    bus.set(offsetOf(block, subBlock, address), value);
}

bool isThere(HardwareMapping const& bus) {
    constexpr unsigned product = 0x7390;
    constexpr unsigned productField = 0xFFFF;
    return (read(bus, system, 0, chipId) >> 12 & productField) == product;
}

void setUp(HardwareMapping& bus) {
    write(bus, analyser, 0, storm, stormValue);
    write(bus, analyser, 0, advancedLearning, read(bus, analyser, 0, advancedLearning) | advancedLearningBit);
}

void clearTables(Chip const& chip) {
    waitForVlans(chip);
    writeAnalyser(chip, vlanCommand, vlanClear);
    for (unsigned port = 0; port < chip.countedPorts; ++port) {
        writeAnalyser(chip, sourceMask + port, 0);
    }
}

void addToVlan(Chip const& chip, unsigned port, TagMembership const& vlan) {
    constexpr unsigned keepTag = 1U << 0;
    constexpr unsigned stripOuter = 1U << 3;
    setIngress(chip, port, vlan);
    if (vlan.egress == Egress::stripTag) {
        setPort(chip, port, egressTag, 0, keepTag);
    } else {
        setPort(chip, port, egressTag, keepTag, stripOuter);
    }
    unsigned entry = readVlan(chip, vlan.vid);
    if ((entry >> 2 & vlanPorts) > vlanPortsUsed) {
        entry &= vlanOther;
    }
    entry |= vlanFlag;
    unsigned const mask = ((entry >> 2 & vlanPorts) | bitOf(port)) & vlanPorts;
    writeVlan(chip, vlan.vid, mask << 2 | (entry & vlanOther));
}

void configureVlans(Chip const& chip, PortPlan const& port) {
    for (TagMembership const& vlan : port.vlans) {
        addToVlan(chip, port.id, vlan);
    }
    unsigned mask = readAnalyser(chip, sourceMask + port.id);
    for (unsigned const route : port.routes) {
        mask |= bitOf(route);
    }
    writeAnalyser(chip, sourceMask + port.id, mask);
}

void joinGroup(Chip const& chip, unsigned port, GroupMembership const& group) {
    constexpr unsigned byte = 0xFF;
    constexpr unsigned twoBytes = 0xFFFF;
    Mac mac;
    groupAddress(group.address, mac);
    unsigned const members = groupMembers(chip, mac, group.vid) | bitOf(port);
    chooseBucket(chip, mac, group.vid);
    writeAnalyser(chip, macDataLow, lowBytes(mac) | (members & byte) << 24);
    writeAnalyser(chip, macDataHigh, (members >> 8 & twoBytes) | group.vid << 16);
    runMac(chip, macWriteGroup);
}

void aggregate(Chip const& chip, std::vector<unsigned> const& members) {
    unsigned all = 0;
    for (unsigned const member : members) {
        all |= bitOf(member);
    }
    for (unsigned i = 0; i < aggregationMasks; ++i) {
        setAnalyser(chip, aggregationMask + i, bitOf(members[i % members.size()]), all);
    }
    for (unsigned const member : members) {
        unsigned const destinations = readAnalyser(chip, destinationMask + member);
        unsigned const sources = readAnalyser(chip, sourceMask + member);
        writeAnalyser(chip, destinationMask + member, destinations | all);
        writeAnalyser(chip, sourceMask + member, sources & ~(all & ~bitOf(member)));
    }
}

void setLink(Chip const& chip, PortPlan const& plan) {
    unsigned const port = plan.id;
    enableReceive(chip, port, false);
    setPort(chip, port, macConfiguration, 0, transmit);
    setDiscard(chip, bitOf(port), 0);
    while ((read(chip.bus, arbiter, 0, arbiterEmpty) & bitOf(port)) == 0) {
        usleep(drainPause);
    }
    setPort(chip, port, macConfiguration, resets, 0);
    setSpeed(chip, port, plan.kind == PortKind::interlink);
    setPort(chip, port, macConfiguration, fullDuplex, 0);
    loadSeed(chip, port);
    setAnalyser(chip, learnMask, bitOf(port), 0);
    setPause(chip, port);
    setDiscard(chip, 0, bitOf(port));
    setPort(chip, port, macConfiguration, 0, resets);
    if (plan.state == PortState::forwarding) {
        enableReceive(chip, port, true);
        setPort(chip, port, macConfiguration, transmit, 0);
    }
    updateSourceMasks(chip);
}

void configurePort(Chip const& chip, PortPlan const& port) {
    setAnalyser(chip, vlanMask, bitOf(port.id), 0);
    if (port.kind != PortKind::other) {
        setLink(chip, port);
    }
}

void readCounters(Chip const& chip, unsigned port) {
    constexpr unsigned addresses[] = {0x50, 0x52, 0x53, 0x54, 0x55, 0x56, 0x51, 0x57, 0x58, 0x59, 0x5A, 0x5B};
    constexpr unsigned cleared = 0x52;
    for (unsigned const address : addresses) {
        readPort(chip, port, address);
    }
    writePort(chip, port, cleared, 0);
}

unsigned hash(unsigned char const (&mac)[6], unsigned vid) {
    unsigned const first = mac[0] | (mac[1] & 0x07U) << 8;
    unsigned const second = static_cast<unsigned>(mac[1]) >> 3 | (mac[2] & 0x3FU) << 5;
    unsigned const third =
        static_cast<unsigned>(mac[2]) >> 6 | static_cast<unsigned>(mac[3]) << 2 | (mac[4] & 0x01U) << 10;
    unsigned const fourth = static_cast<unsigned>(mac[4]) >> 1 | (mac[5] & 0x0FU) << 7;
    unsigned const fifth = static_cast<unsigned>(mac[5]) >> 4 | (vid & 0x3FU) << 4;
    return first ^ second ^ third ^ fourth ^ fifth;
}

} // namespace required::vitesse
