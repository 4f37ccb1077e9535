#include "tests/simulation/conformance/ForwardingVsc7390.hpp"

#include "simulation/vsc7390/Forwarding.hpp"

namespace simulation_test {

namespace {

constexpr unsigned vitessePorts = 24;
constexpr unsigned allPorts = 0x01FFFFFF;

std::string unitOf(unsigned port) {
    return "port " + std::to_string(port);
}

void addVitessePort(ForwardingChip::Writes& writes, Chance& chance, unsigned number) {
    std::string const unit = unitOf(number);
    writes.push_back(
        {unit, 0x00, chance.percent(90) ? 0x10050001 | chance.bits(0x0000C000) : chance.bits(0x30010031)});
    writes.push_back({unit, 0x24, chance.bits(0x00000009) | chance.vid() << 4});
    writes.push_back({unit, 0x6E, chance.bits(0x5F) & chance.bits(0x5F) & chance.bits(0x5F)});
    writes.push_back({unit, 0x79, chance.bits(0x0180) & chance.bits(0x0180)});
    writes.push_back({unit, 0x7A, chance.bits(0xF000) | chance.vid()});
    writes.push_back({"analyser", 0x40 + number, chance.percent(90) ? 1U << number : chance.bits(allPorts)});
    writes.push_back({"analyser", 0x80 + number, chance.bits(allPorts)});
}

void addVlanEntry(ForwardingChip::Writes& writes, Chance& chance) {
    writes.push_back({"analyser", 0xE0, chance.vid()});
    unsigned const flags = chance.percent(30)  ? chance.bits(0x50000000)
                           : chance.percent(5) ? 0x20000000U
                                               : 0U;
    writes.push_back({"analyser", 0xD0, (chance.bits(allPorts) | chance.bits(allPorts)) << 2 | flags | 2});
}

// LEARN puts an address where it belongs.
void addMacEntry(ForwardingChip::Writes& writes, Chance& chance) {
    Frames::Frame::Address const address = chance.percent(80) ? chance.station() : Frames::group;
    unsigned const flags = chance.percent(20) ? chance.bits(0x7200) : 0;
    writes.push_back({"analyser", 0x06, chance.vid() << 16 | static_cast<unsigned>(address >> 32)});
    writes.push_back({"analyser", 0x07, static_cast<std::uint32_t>(address)});
    writes.push_back({"analyser", 0xB0, 0x0401 | flags | chance.below(vitessePorts) << 3});
}

// The group of Frames::ipGroup in VLAN 1.
void addGroup(ForwardingChip::Writes& writes, Chance& chance) {
    unsigned const ports = chance.bits(0x00FFFFFF);
    writes.push_back({"analyser", 0xC0, 0x00CA});
    writes.push_back({"analyser", 0x06, 1U << 16 | ports >> 8});
    writes.push_back({"analyser", 0x07, ports << 24 | 0x010102});
    writes.push_back({"analyser", 0xB0, 0x0E07 | chance.bits(0x1000)});
}

} // namespace

ForwardingVsc7390::ForwardingVsc7390() : ForwardingChip("vsc7390") {
    for (unsigned port = 0; port < vitessePorts; ++port) {
        side().plugLink(port);
    }
}

ForwardingChip::Writes ForwardingVsc7390::contents(Chance& chance) const {
    Writes writes;
    for (unsigned port = 0; port < vitessePorts; ++port) {
        addVitessePort(writes, chance, port);
    }
    for (unsigned count = 0; count < 8; ++count) {
        addVlanEntry(writes, chance);
        addMacEntry(writes, chance);
    }
    for (unsigned mask = 0x30; mask < 0x40; ++mask) {
        writes.push_back({"analyser", mask, chance.manyBits(allPorts)});
    }
    for (unsigned mask : {0x04U, 0x0DU, 0x0EU, 0x0FU, 0x10U}) {
        writes.push_back({"analyser", mask, chance.manyBits(allPorts)});
    }
    writes.push_back({"analyser", 0x03, chance.bits(0x02000000)});
    writes.push_back({"analyser", 0x05, chance.bits(allPorts) & chance.bits(allPorts)});
    addGroup(writes, chance);
    return writes;
}

ForwardingChip::Writes ForwardingVsc7390::command(Chance& chance) const {
    Writes writes;
    addVlanEntry(writes, chance);
    addMacEntry(writes, chance);
    writes.push_back({"analyser", 0xC0, chance.bits(0x1FFF)});
    writes.push_back(chance.percent(50) ? Write{"analyser", 0xB0, chance.bits(0x7FFF)}
                                        : Write{"analyser", 0xD0, chance.bits(0x77FFFFFF)});
    writes.push_back({"mii 1", 0x01, chance.bits(0x07FFFFFF)});
    return writes;
}

std::vector<std::string> ForwardingVsc7390::deciding() const {
    return {"port 00",     "port 10",     "port 24",     "port 6E",     "port 79",
            "port 7A",     "analyser 03", "analyser 04", "analyser 05", "analyser 0D",
            "analyser 0E", "analyser 0F", "analyser 10", "analyser 81", "system 14"};
}

void ForwardingVsc7390::forget() {
    dynamic_cast<simulation::vitesse::Forwarding&>(forwarding()).getSnapshot().refresh();
}

bool ForwardingVsc7390::mayReturn(unsigned port) {
    return (side().peek("analyser", 0x80 + port) >> port & 1) != 0;
}

// RX_EN without PORT_RST and MAC_RX_RST; all have link.
bool ForwardingVsc7390::isOn(unsigned port) {
    return (side().peek(unitOf(port), 0x00) & 0x20010020) == 0x00010000;
}

std::uint32_t ForwardingVsc7390::received(unsigned port) {
    return side().peek(unitOf(port), 0x52);
}

std::uint32_t ForwardingVsc7390::sent(unsigned port) {
    return side().peek(unitOf(port), 0x57);
}

std::uint32_t ForwardingVsc7390::octetsSent(unsigned port) {
    return side().peek(unitOf(port), 0x51);
}

} // namespace simulation_test
