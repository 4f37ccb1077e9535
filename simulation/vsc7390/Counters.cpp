#include "simulation/vsc7390/Counters.hpp"

#include <array>
#include <stdexcept>

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

namespace {

constexpr unsigned first = Vsc7390TestSide::firstCounter;
constexpr unsigned last = Vsc7390TestSide::lastCounter;

constexpr std::array<char const*, last - first + 1> names = {
    "C_RX_OCTETS", "C_TX_OCTETS",  "C_RX_PACKETS",     "C_RX_BROAD_MULTI", "C_RX_ERRORS", "C_RX_DROPS",
    "C_RX_CLASS3", "C_TX_PACKETS", "C_TX_BROAD_MULTI", "C_TX_ERRORS",      "C_TX_DROPS",  "C_TX_CLASS3"};

void require(unsigned address) {
    if (address < first || address > last) {
        throw std::out_of_range("no such counter");
    }
}

} // namespace

void Counters::addTo(RegisterTable& table) {
    for (unsigned address = first; address <= last; ++address) {
        Register counter = Register(address, names[address - first]).counter().readOnly("Count", 31, 0);
        if (address == port::packetsIn) {
            counter.onAttempt([this](std::uint32_t value) {
                if (value == 0) {
                    clear();
                }
            });
        }
        table.add(counter);
    }
}

void Counters::attach(RegisterFile& registers) {
    _registers = &registers;
}

std::uint32_t Counters::get(unsigned address) const {
    require(address);
    return _registers->getStored(address);
}

void Counters::set(unsigned address, std::uint32_t value) {
    require(address);
    _registers->store(address, value);
}

void Counters::clear() {
    for (unsigned address = first; address <= last; ++address) {
        _registers->store(address, 0);
    }
}

} // namespace simulation::vitesse
