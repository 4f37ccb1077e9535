#include "simulation/88e6096/Statistics.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

using namespace statistics;

constexpr Field lowHalf{"Low", bitsPerRegister - 1, 0};

} // namespace

Statistics::Statistics(Context& context, RegisterFile& registers)
    : CommandUnit(context, registers, global1::statsOperation, context.options.statisticsBusyNanoseconds) {}

// The histogram mode is not looked at: one set of histogram counters stands for both directions.
void Statistics::perform(std::uint32_t word) {
    unsigned const operation = globalOperation.get(word);
    unsigned const number = item.get(word);
    if (operation == statistics::flushAll) {
        _counters = {};
    } else if (operation == readCounter) {
        readCaptured(number);
    } else if (operation != flushPort && operation != capturePort) {
        reportMeaningless("no such operation");
    } else if (number >= _counters.size()) {
        reportMeaningless("no such port");
    } else if (operation == flushPort) {
        _counters[number] = {};
    } else {
        _captured = _counters[number];
    }
}

void Statistics::readCaptured(unsigned counter) {
    if (counter >= _captured.size()) {
        reportMeaningless("no such counter");
        return;
    }
    _registers.store(global1::statsHigh, _captured[counter] >> bitsPerRegister);
    _registers.store(global1::statsLow, lowHalf.get(_captured[counter]));
}

void Statistics::countOctets(unsigned port, unsigned counter, std::size_t octets) {
    std::uint32_t& low = _counters[port][counter];
    std::uint64_t const sum = std::uint64_t{low} + octets;
    low = static_cast<std::uint32_t>(sum);
    _counters[port][counter + 1] += static_cast<std::uint32_t>(sum >> 32);
}

std::uint32_t Statistics::getCounter(unsigned port, unsigned counter) const {
    return _counters.at(port).at(counter);
}

void Statistics::setCounter(unsigned port, unsigned counter, std::uint32_t value) {
    _counters.at(port).at(counter) = value;
}

} // namespace simulation::marvell
