#include "tests/simulation/conformance/Forwarding88E6096.hpp"

#include "simulation/88e6096/Forwarding.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace simulation_test {

namespace {

constexpr unsigned marvellPorts = 11;

void addMarvellPort(ForwardingChip::Writes& writes, Chance& chance, unsigned number) {
    std::string const unit = "port " + std::to_string(number);
    unsigned const odd = chance.percent(20) ? chance.bits(0x40C0) : 0;
    writes.push_back({unit, 0x01, chance.oneOf({0x0003U, 0x0003U, 0x0003U, 0x0003U, 0x0033U, 0x0013U})});
    writes.push_back({unit, 0x04,
                      (chance.percent(90) ? 3U : chance.below(4)) | (odd & 0x00C0) | chance.manyBits(0x000C) |
                          chance.bits(0x3000) | (chance.percent(2) ? 0x0100U : 0U)});
    writes.push_back({unit, 0x05, (odd & 0x4000) | chance.below(4) << 8});
    writes.push_back({unit, 0x06, chance.manyBits(0x07FF) | chance.below(3) << 12});
    writes.push_back({unit, 0x07, chance.bits(0xE000) | (chance.percent(10) ? 0x1000U : 0U) | chance.vid()});
    writes.push_back(
        {unit, 0x08, chance.bits(0x0C00) | 0x0080U | (chance.percent(10) ? chance.bits(0x0380) : 0U)});
    writes.push_back({unit, 0x0B, chance.percent(80) ? 1U << number : chance.bits(0x27FF)});
}

// Codes of four ports, most of them members.
unsigned memberCodes(Chance& chance) {
    return chance.bits(0x3333) & chance.bits(0xFFFF);
}

void addVtuEntry(ForwardingChip::Writes& writes, Chance& chance) {
    bool const isStates = chance.percent(30);
    writes.push_back({"global 1", 0x06, 0x1000 | chance.vid()});
    writes.push_back({"global 1", 0x02, chance.below(3)});
    writes.push_back({"global 1", 0x03, chance.below(3)});
    for (unsigned data : {0x07U, 0x08U, 0x09U}) {
        writes.push_back({"global 1", data, isStates ? chance.manyBits(0xCCCC) : memberCodes(chance)});
    }
    writes.push_back({"global 1", 0x05, isStates ? 0xD000U : 0xB000U});
}

void addAtuEntry(ForwardingChip::Writes& writes, Chance& chance) {
    Frames::Frame::Address const address = chance.percent(80) ? chance.station() : Frames::group;
    writes.push_back({"global 1", 0x01, chance.below(3)});
    writes.push_back({"global 1", 0x0D, static_cast<unsigned>(address >> 32)});
    writes.push_back({"global 1", 0x0E, static_cast<unsigned>(address >> 16 & 0xFFFF)});
    writes.push_back({"global 1", 0x0F, static_cast<unsigned>(address & 0xFFFF)});
    writes.push_back({"global 1", 0x0C,
                      chance.bits(0x7FF0) | (chance.percent(20) ? 0x8000U : 0U) | chance.oneOf({7U, 0xEU})});
    writes.push_back({"global 1", 0x0B, 0xB000});
}

} // namespace

Forwarding88E6096::Forwarding88E6096() : ForwardingChip("88e6096") {
    for (unsigned port = 0; port < marvellPorts; ++port) {
        side().plugLink(port);
    }
}

ForwardingChip::Writes Forwarding88E6096::contents(Chance& chance) const {
    Writes writes;
    for (unsigned port = 0; port < marvellPorts; ++port) {
        addMarvellPort(writes, chance, port);
    }
    for (unsigned count = 0; count < 8; ++count) {
        addVtuEntry(writes, chance);
        addAtuEntry(writes, chance);
        writes.push_back({"global 2", 0x07, 0x8000 | count << 12 | chance.manyBits(0x07FF)});
        writes.push_back({"global 2", 0x08, 0x8000 | count << 11 | chance.bits(0x07FF)});
    }
    writes.push_back({"global 1", 0x04, chance.bits(0x0400)});
    writes.push_back({"global 1", 0x1A, chance.below(marvellPorts) << 4});
    writes.push_back({"global 2", 0x02, chance.bits(0xFFFF)});
    writes.push_back({"global 2", 0x03, chance.bits(0xFFFF)});
    writes.push_back({"global 2", 0x05, chance.bits(0x0008)});
    return writes;
}

ForwardingChip::Writes Forwarding88E6096::command(Chance& chance) const {
    Writes writes;
    addVtuEntry(writes, chance);
    addAtuEntry(writes, chance);
    writes.push_back({"global 2", 0x19, chance.bits(0xFFFF)});
    unsigned const reg = chance.oneOf({0x05U, 0x0BU, 0x1DU});
    bool const isGlobal1 = chance.percent(50);
    writes.push_back(isGlobal1 ? Write{"global 1", reg, 0x8000 | chance.bits(0x7FFF)}
                               : Write{"global 2", chance.oneOf({0x06U, 0x07U, 0x08U, 0x09U, 0x14U, 0x18U}),
                                       0x8000 | chance.bits(0x7FFF)});
    return writes;
}

std::vector<std::string> Forwarding88E6096::deciding() const {
    return {"port 00", "port 01", "port 04",     "port 05",     "port 06",     "port 07",     "port 08",
            "port 0B", "phy 00",  "global 1 04", "global 1 1A", "global 2 02", "global 2 03", "global 2 05"};
}

void Forwarding88E6096::forget() {
    dynamic_cast<simulation::marvell::Forwarding&>(forwarding()).markAll();
}

// Its own bit of VLANTable, or VLANTunnel, which goes past it.
bool Forwarding88E6096::mayReturn(unsigned port) {
    simulation::RegisterFile const& unit = side().getUnit("port " + std::to_string(port));
    return (unit.peek(0x06) >> port & 1) != 0 || (unit.peek(0x04) & 0x0080) != 0;
}

bool Forwarding88E6096::isOn(unsigned port) {
    return forwarding().hasLink(port) && (side().peek("port " + std::to_string(port), 0x04) & 3) != 0;
}

std::uint32_t Forwarding88E6096::sum(unsigned port, std::initializer_list<unsigned> counters) {
    std::uint32_t sum = 0;
    for (unsigned const counter : counters) {
        sum += dynamic_cast<simulation::Marvell88E6096TestSide&>(side()).getCounter(port, counter);
    }
    return sum;
}

std::uint32_t Forwarding88E6096::received(unsigned port) {
    return sum(port, {0x04, 0x06, 0x07, 0x16, 0x18, 0x19, 0x1A, 0x1B, 0x1D});
}

std::uint32_t Forwarding88E6096::sent(unsigned port) {
    return sum(port, {0x10, 0x12, 0x13});
}

std::uint32_t Forwarding88E6096::octetsSent(unsigned port) {
    return sum(port, {0x0E});
}

} // namespace simulation_test
