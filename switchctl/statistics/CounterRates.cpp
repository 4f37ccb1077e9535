#include "switchctl/statistics/CounterRates.hpp"

namespace switchctl::statistics {

namespace {

/// What 1 Gbit/s can be at most; of both directions, as some counters are.
constexpr double bytesPerSecond = 2 * 125e6;
/// Frames of 64 bytes, with preamble and gap.
constexpr double framesPerSecond = 2 * 1.5e6;
/// Time between two readings is not measured at the counter.
constexpr double tolerance = 2;

} // namespace

std::vector<CounterRates::Rate> CounterRates::between(chips::PortCounters const& before,
                                                      chips::PortCounters const& after, double seconds) {
    std::vector<Rate> rates(after.values.size());
    for (std::size_t index = 0; index < rates.size(); ++index) {
        auto const& first = before.values[index];
        auto const& second = after.values[index];
        if (first && second) {
            rates[index] = between(after.getCounters()[index], *first, *second, seconds);
        }
    }
    return rates;
}

CounterRates::Rate CounterRates::between(chips::Counter const& counter, std::uint64_t before,
                                         std::uint64_t after, double seconds) {
    std::uint64_t const counted = (after - before) & counter.getLargest();
    double const most = tolerance * seconds *
                        (counter.unit == chips::Counter::Unit::bytes ? bytesPerSecond : framesPerSecond);
    if (after<before&& static_cast<double>(counted)> most) {
        return {std::nullopt, true};
    }
    return {counted, false};
}

} // namespace switchctl::statistics
