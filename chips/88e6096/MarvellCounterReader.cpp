#include "chips/88e6096/MarvellCounterReader.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace chips {

namespace {

namespace marvell = simulation::marvell;
namespace global1 = simulation::marvell::global1;
namespace statistics = simulation::marvell::statistics;

/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned looksAtStatistics = 1000;

} // namespace

MarvellCounterReader::MarvellCounterReader(ChipKind const& kind, ChipCatalogue const& catalogue,
                                           RegisterTransport& transport)
    : CounterReader(kind, catalogue, transport),
      _transport(transport),
      _operation(catalogue.at(simulation::UnitKind::global, 1, global1::statsOperation)),
      _high(catalogue.at(simulation::UnitKind::global, 1, global1::statsHigh)),
      _low(catalogue.at(simulation::UnitKind::global, 1, global1::statsLow)) {}

void MarvellCounterReader::capture(unsigned port) {
    operate(statistics::capturePort, port);
}

std::uint32_t MarvellCounterReader::readCaptured(unsigned number) {
    operate(statistics::readCounter, number);
    std::uint32_t const low = _transport.read(_low);
    return _transport.read(_high) << marvell::bitsPerRegister | low;
}

void MarvellCounterReader::operate(unsigned operation, unsigned item) {
    std::uint32_t const before = wait();
    _transport.write(_operation, marvell::busy.getMask() | marvell::globalOperation.placed(operation) |
                                     (before & statistics::histogramMode.getMask()) |
                                     statistics::item.placed(item));
    wait();
}

std::uint32_t MarvellCounterReader::wait() {
    return _transport.waitUntilClear(_operation, marvell::busy, looksAtStatistics,
                                     "the statistics unit stays busy");
}

} // namespace chips
