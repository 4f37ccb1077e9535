#include "chips/CounterReader.hpp"

#include <fmt/format.h>

#include "chips/ChipKind.hpp"
#include "chips/ToolError.hpp"

namespace chips {

namespace {

/// Looks at a counter of two registers until none of its low half's wraps came between.
constexpr unsigned mostTries = 5;

} // namespace

CounterReader::CounterReader(ChipKind const& kind, ChipCatalogue const& catalogue,
                             RegisterTransport& transport)
    : _kind(kind), _catalogue(catalogue), _transport(transport) {}

bool CounterReader::isChipThere() {
    return _kind.answers(_catalogue, _transport);
}

PortCounters CounterReader::read(PortAddress const& port, std::vector<std::string>& unread,
                                 Choice const& choice) {
    PortCounters counters{port, _kind.getFacts().model, {}};
    counters.values.resize(_kind.getFacts().counters.size());
    readInto(counters, unread, choice);
    return counters;
}

void CounterReader::readInto(PortCounters& counters, std::vector<std::string>& unread, Choice const& choice) {
    auto const complain = [&](std::string const& what, ToolError const& error) {
        unread.push_back(fmt::format("port {}: {}: {}", counters.port.getText(), what, error.what()));
        return isChipLost();
    };
    bool isCaptured = false;
    try {
        capture(counters.port.portId);
        isCaptured = true;
    } catch (ToolError const& error) {
        if (complain("the counters could not be captured", error)) {
            return;
        }
    }
    for (std::size_t index = 0; index < counters.values.size(); ++index) {
        Counter const& counter = _kind.getFacts().counters[index];
        // What an earlier capture left is somebody else's.
        if ((choice && !choice(counter)) ||
            (counter.place == Counter::Place::statisticsUnit && !isCaptured)) {
            continue;
        }
        try {
            counters.values[index] = readCounter(counter, counters.port.portId);
        } catch (ToolError const& error) {
            if (complain(counter.name, error)) {
                return;
            }
        }
    }
}

std::uint64_t CounterReader::readCounter(Counter const& counter, unsigned port) {
    if (counter.place == Counter::Place::portRegister) {
        return readPortRegisters(counter, port);
    }
    std::uint64_t const low = readCaptured(counter.low);
    std::uint64_t const high = counter.high ? readCaptured(*counter.high) : 0;
    return high << counter.bitsOfRegister | low;
}

std::uint64_t CounterReader::readPortRegisters(Counter const& counter, unsigned port) {
    auto const readAt = [&](unsigned address) {
        return _transport.read(_catalogue.at(simulation::UnitKind::port, port, address));
    };
    if (!counter.high) {
        return readAt(counter.low);
    }
    std::uint64_t high = readAt(*counter.high);
    for (unsigned tries = 0; tries < mostTries; ++tries) {
        std::uint64_t const low = readAt(counter.low);
        std::uint64_t const highAgain = readAt(*counter.high);
        if (highAgain == high) {
            return high << counter.bitsOfRegister | low;
        }
        high = highAgain;
    }
    throw ToolError(ExitStatus::registerFailed, "it does not stay the same between two reads");
}

/// A chip that does not answer will not do so for the next register, either.
bool CounterReader::isChipLost() {
    try {
        return !isChipThere();
    } catch (ToolError const&) {
        return true;
    }
}

} // namespace chips
