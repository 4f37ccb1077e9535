// The counters of MarvellPort: the chip's statistics unit and the counters in the port's own registers.

#include <arpa/inet.h>

#include <cstdint>
#include <iomanip>
#include <ostream>

#include "host/Application.hpp"
#include "marvell/CounterNumbers.hpp"
#include "marvell/Global1Registers.hpp"
#include "marvell/MarvellPort.hpp"
#include "marvell/PortRegisters.hpp"
#include "model/Polling.hpp"

namespace {

/// Two 16-bit registers, or two 32-bit counters, as one number.
template <typename Whole, typename Half> Whole joined(Half high, Half low) {
    constexpr BitField<std::uint64_t> highHalf(sizeof(Half) * 8, sizeof(Half) * 8);
    return static_cast<Whole>(highHalf.of(high) + low);
}

enum class Width : int { usual = 8, wide = 16 };
enum class Then { goOn, endLine };

/// One number of the table: its label, its width in digits, and whether it ends the line.
struct Cell {
    char const* label;
    std::uint64_t value;
    Then then = Then::goOn;
    Width width = Width::usual;
};

} // namespace

bool MarvellPort::statsCommand(StatsOperationCommand operation, unsigned short bank, unsigned short pointer) {
    namespace stats = global1::stats_operation;
    auto const command = static_cast<unsigned short>(
        stats::busy.mask() | stats::operation.of(static_cast<unsigned int>(operation)) |
        stats::bank.of(bank) | stats::pointer.of(pointer));
    return waitForStatsCommand() &&
           _communications.writeRegister(Registers(global1::device, global1::statsOperation, command)) &&
           waitForStatsCommand();
}

bool MarvellPort::waitForStatsCommand() {
    if (!hasRegisters()) {
        return false;
    }
    polling::End const end = polling::untilReadyWithoutPause(_statsTimeout, [this] {
        Registers command(global1::device, global1::statsOperation);
        return _communications.readRegister(command)
                   ? polling::busyIf(global1::stats_operation::busy.isSet(command.value))
                   : polling::Status::failed;
    });
    if (end == polling::End::timedOut) {
        getSwitch().getApplication()->logError("MarvellPort::statsCommand Stats Busy timeout\n");
    }
    return end == polling::End::ready;
}

bool MarvellPort::clearStatistics() {
    return statsCommand(StatsOperationCommand::flushPort, 0, portNumber());
}

bool MarvellPort::dumpStatistics(std::ostream& out) {
    std::array<unsigned int, numberOfChipCounters> counters{};
    if (!statsCommand(StatsOperationCommand::capturePort, 0, portNumber()) || !readCounters(counters)) {
        return false;
    }
    _snapshot.counters = counters;
    unsigned short const inDiscardsLow = readPortCounter(port_registers::inDiscardsLow);
    unsigned short const inDiscardsHigh = readPortCounter(port_registers::inDiscardsHigh);
    _snapshot.inDiscards = joined<unsigned int>(inDiscardsHigh, inDiscardsLow);
    _snapshot.inFiltered = readPortCounter(port_registers::inFiltered);
    _snapshot.outFiltered = readPortCounter(port_registers::outFiltered);
    print(out);
    return true;
}

bool MarvellPort::readCounters(std::array<unsigned int, numberOfChipCounters>& counters) {
    for (unsigned short number = 0; number < _numberOfCounters; ++number) {
        if (!readCounter(number, counters[number])) {
            return false;
        }
    }
    return true;
}

bool MarvellPort::readCounter(unsigned short number, unsigned int& counter) {
    Registers low(global1::device, global1::statsCounterLow);
    Registers high(global1::device, global1::statsCounterHigh);
    if (!statsCommand(StatsOperationCommand::readCounter, 0, number) || !_communications.readRegister(low) ||
        !_communications.readRegister(high)) {
        return false;
    }
    counter = joined<unsigned int>(high.value, low.value);
    return true;
}

unsigned short MarvellPort::readPortCounter(unsigned short registerNumber) {
    unsigned short value = 0;
    readPort(registerNumber, value);
    return value;
}

void MarvellPort::print(std::ostream& out) const {
    using namespace counter_numbers;
    auto const& counters = _snapshot.counters;
    // Only the high word of the good octets is taken for network order.
    auto const inGoodOctets =
        joined<std::uint64_t>(static_cast<std::uint32_t>(ntohl(counters[inGoodOctetsHigh])),
                              static_cast<std::uint32_t>(counters[inGoodOctetsLow]));
    auto const outOctets = joined<std::uint64_t>(counters[outOctetsHigh], counters[outOctetsLow]);
    Cell const cells[] = {
        {"inGoodOctets\t", inGoodOctets, Then::goOn, Width::wide},
        {"\tinBadOctets\t", counters[inBadOctets], Then::endLine},
        {"inUnicast\t\t", counters[inUnicast]},
        {"\tinBroadcast\t", counters[inBroadcast]},
        {"\tinMulticast\t", counters[inMulticast]},
        {"\tinPause\t", counters[inPause], Then::endLine},
        {"inUndersized\t\t", counters[inUndersize]},
        {"\tinFragments\t", counters[inFragments]},
        {"\tinOversized\t", counters[inOversize], Then::endLine},
        {"inJabber\t\t", counters[inJabber]},
        {"\tinRxErr\t\t", counters[inRxErr]},
        {"\tinFCSErr\t", counters[inFcsErr], Then::endLine},
        {"inDiscards\t", _snapshot.inDiscards, Then::goOn, Width::wide},
        {"\tinFiltered\t", _snapshot.inFiltered, Then::endLine},
        {"octets64\t\t", counters[octets64]},
        {"\toctets65to127\t", counters[octets65To127]},
        {"\toctets128to255\t", counters[octets128To255], Then::endLine},
        {"octets256to511\t\t", counters[octets256To511]},
        {"\toctets512to1023\t", counters[octets512To1023]},
        {"\toctets1024toMax\t", counters[octets1024ToMax], Then::endLine},
        {"outOctets\t", outOctets, Then::endLine, Width::wide},
        {"outUnicast\t\t", counters[outUnicast]},
        {"\toutBroadcast\t", counters[outBroadcast]},
        {"\toutMulticast\t", counters[outMulticast]},
        {"\toutPause\t", counters[outPause], Then::endLine},
        {"deferred\t\t", counters[deferred]},
        {"\tcollisions\t", counters[collisions]},
        {"\tsingle\t\t", counters[single]},
        {"\tmultiple\t", counters[multiple], Then::endLine},
        {"excessive\t\t", counters[excessive]},
        {"\tlate\t\t", counters[late]},
        {"\toutFcsErr\t", counters[outFcsErr], Then::endLine},
        {"outFiltered\t\t", _snapshot.outFiltered, Then::endLine},
    };
    out << std::hex << std::setfill('0');
    for (Cell const& cell : cells) {
        out << cell.label << std::setw(static_cast<int>(cell.width)) << cell.value;
        if (cell.then == Then::endLine) {
            out << std::endl;
        }
    }
}
