// What was counted between two readings.

#include "switchctl/statistics/CounterRates.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chips/ChipKinds.hpp"

using chips::Counter;
using chips::PortCounters;
using switchctl::statistics::CounterRates;

namespace {

chips::Counter const& counterNamed(std::string const& name) {
    for (char const* const model : {"88e6096", "vsc7390"}) {
        for (chips::Counter const& counter : chips::ChipKinds::get(model, "a test").getFacts().counters) {
            if (name == counter.name) {
                return counter;
            }
        }
    }
    throw std::out_of_range(name);
}

CounterRates::Rate rate(std::string const& name, std::uint64_t before, std::uint64_t after, double seconds) {
    return CounterRates::between(counterNamed(name), before, after, seconds);
}

} // namespace

TEST(CounterRatesTest, IsTheDifference) {
    EXPECT_EQ(rate("inUnicast", 100, 350, 1).counted, 250U);
    EXPECT_EQ(rate("inUnicast", 100, 100, 1).counted, 0U);
}

TEST(CounterRatesTest, Counters32BitsWideWrap) {
    EXPECT_EQ(rate("inUnicast", 0xFFFFFFF6, 0x14, 1).counted, 30U);
    EXPECT_EQ(rate("inGoodandBadOctets", 0xFFFFFFFF, 0, 1).counted, 1U);
    EXPECT_FALSE(rate("inGoodandBadOctets", 0xFFFFFFFF, 0, 1).isCleared);
}

TEST(CounterRatesTest, Counters16BitsWideWrap) {
    EXPECT_EQ(rate("inFiltered", 0xFFFF, 1, 1).counted, 2U);
    EXPECT_EQ(rate("outFiltered", 0x8000, 0x7FFF, 1).counted, 0xFFFFU);
}

TEST(CounterRatesTest, Counters64BitsWideCarryIntoTheHighHalf) {
    EXPECT_EQ(rate("inGoodOctets", 0xFFFFFFFF, 0x100000000, 1).counted, 1U);
    EXPECT_EQ(rate("outOctets", 0xFFFFFFFFFFFFFFFF, 4, 1).counted, 5U);
}

TEST(CounterRatesTest, ACounterThatNoLineBringsRoundWasCleared) {
    // From 1000 to 3 in a second: four thousand million frames, or nobody's.
    CounterRates::Rate const cleared = rate("inUnicast", 1000, 3, 1);
    EXPECT_TRUE(cleared.isCleared);
    EXPECT_EQ(cleared.counted, std::nullopt);
    EXPECT_TRUE(rate("inGoodOctets", 1000, 3, 1).isCleared);
}

TEST(CounterRatesTest, InALongTimeALineBringsACounterRound) {
    // 1 Gbit/s carries 4294967296 bytes in 35 seconds.
    EXPECT_EQ(rate("inGoodandBadOctets", 1000, 3, 35).counted, 0xFFFFFC1BU);
    EXPECT_TRUE(rate("inGoodandBadOctets", 1000, 3, 1).isCleared);
}

TEST(CounterRatesTest, WithoutOneOfTheReadingsThereIsNone) {
    chips::PortCounters before{{0, 1}, "vsc7390", {}};
    before.values.resize(12);
    chips::PortCounters after = before;
    before.values[0] = 5;
    after.values[0] = 7;
    before.values[1] = 5;
    after.values[2] = 5;
    auto const rates = CounterRates::between(before, after, 1);
    ASSERT_EQ(rates.size(), 12U);
    EXPECT_EQ(rates[0].counted, 2U);
    EXPECT_EQ(rates[1].counted, std::nullopt);
    EXPECT_EQ(rates[2].counted, std::nullopt);
    EXPECT_FALSE(rates[1].isCleared);
}
