#include "chips/CounterReader.hpp"

#include "chips/ToolError.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/vsc7390/Registers.hpp"

namespace chips {

namespace {

namespace marvell = simulation::marvell;
namespace global1 = simulation::marvell::global1;
namespace vitesse = simulation::vitesse;

constexpr unsigned readOperation = 4;
constexpr unsigned captureOperation = 5;
constexpr unsigned halfOfCounter = 16;

/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned mostLooks = 1000;

/// Looks at a counter of two registers until none of its low half's wraps came between.
constexpr unsigned mostTries = 5;

std::string nameOf(unsigned port) {
    return "port " + std::to_string(port);
}

} // namespace

CounterReader::CounterReader(ChipCatalogue const& catalogue, RegisterTransport& transport)
    : _catalogue(catalogue), _transport(transport) {}

bool CounterReader::isChipThere() {
    if (_catalogue.getModel() == "vsc7390") {
        std::uint32_t const identifier = _transport.read(_catalogue.find("system/CHIPID"));
        return vitesse::system::product.get(identifier) == vitesse::system::productNumber;
    }
    std::uint32_t const identifier = _transport.read(_catalogue.find("port 0/SwitchIdentifier"));
    return marvell::port::product.get(identifier) == marvell::port::productNumber;
}

PortCounters CounterReader::read(PortAddress const& port, std::vector<std::string>& unread) {
    PortCounters counters{port, _catalogue.getModel(), {}};
    counters.values.resize(counters.getCounters().size());
    readInto(counters, unread);
    return counters;
}

void CounterReader::readInto(PortCounters& counters, std::vector<std::string>& unread) {
    std::string const port =
        std::to_string(counters.port.switchId) + "." + std::to_string(counters.port.portId);
    bool isCaptured = counters.model != "88e6096";
    if (!isCaptured) {
        try {
            capture(counters.port.portId);
            isCaptured = true;
        } catch (ToolError const& error) {
            unread.push_back("port " + port + ": the counters could not be captured: " + error.what());
            if (isChipLost()) {
                return;
            }
        }
    }
    for (std::size_t index = 0; index < counters.values.size(); ++index) {
        Counter const& counter = counters.getCounters()[index];
        // What an earlier capture left is somebody else's.
        if (counter.place == Counter::Place::statisticsUnit && !isCaptured) {
            continue;
        }
        try {
            counters.values[index] = readCounter(counter, counters.port.portId);
        } catch (ToolError const& error) {
            unread.push_back("port " + port + ": " + counter.name + ": " + error.what());
            if (isChipLost()) {
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
    std::string const unit = nameOf(port);
    if (!counter.high) {
        return readAt(unit, counter.low);
    }
    std::uint64_t high = readAt(unit, *counter.high);
    for (unsigned tries = 0; tries < mostTries; ++tries) {
        std::uint64_t const low = readAt(unit, counter.low);
        std::uint64_t const highAgain = readAt(unit, *counter.high);
        if (highAgain == high) {
            return high << counter.bitsOfRegister | low;
        }
        high = highAgain;
    }
    throw ToolError(ExitStatus::registerFailed, "it does not stay the same between two reads");
}

std::uint32_t CounterReader::readCaptured(unsigned number) {
    operate(readOperation, number);
    std::uint32_t const low = readAt("global 1", global1::statsLow);
    return readAt("global 1", global1::statsHigh) << halfOfCounter | low;
}

void CounterReader::capture(unsigned port) {
    operate(captureOperation, port);
}

void CounterReader::operate(unsigned operation, unsigned pointer) {
    std::uint32_t const before = waitForUnit();
    _transport.write(_catalogue.find("global 1/" + std::to_string(global1::statsOperation)),
                     marvell::busy.getMask() | marvell::globalOperation.placed(operation) |
                         (before & marvell::statistics::histogramMode.getMask()) | pointer);
    waitForUnit();
}

std::uint32_t CounterReader::waitForUnit() {
    for (unsigned looks = 0; looks < mostLooks; ++looks) {
        std::uint32_t const word = readAt("global 1", global1::statsOperation);
        if (!marvell::busy.isSet(word)) {
            return word;
        }
    }
    throw ToolError(ExitStatus::registerFailed, "the statistics unit stays busy");
}

std::uint32_t CounterReader::readAt(std::string const& unit, unsigned address) {
    return _transport.read(_catalogue.find(unit + "/" + std::to_string(address)));
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
