// A counter that cannot be read has no value; it is never 0.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "StatisticsBench.hpp"
#include "chips/ToolError.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/statistics/LibraryText.hpp"
#include "switchctl/statistics/OpenMetrics.hpp"
#include "switchctl/statistics/SampleJson.hpp"

using chips::CounterSample;
using chips::PortCounters;
using chips::ToolError;
using simulation::Marvell88E6096TestSide;
using switchctl::statistics::LibraryText;
using switchctl::statistics::OpenMetrics;
using switchctl::statistics::SampleJson;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

using MarvellUnit = Marvell88E6096TestSide::CommandUnit;

std::size_t valuesOf(chips::PortCounters const& port) {
    std::size_t count = 0;
    for (auto const& value : port.values) {
        count += value.has_value() ? 1 : 0;
    }
    return count;
}

std::string openMetricsOf(chips::CounterSample const& sample) {
    std::ostringstream out;
    OpenMetrics::print(sample, out);
    return out.str();
}

nlohmann::json jsonOf(chips::CounterSample const& sample) {
    return SampleJson::of(sample, "board.xml", "models");
}

/// What the library writes about the only port of a bench; "!" and the reason when it is refused.
std::string libraryText(StatisticsBench& bench) {
    std::ostringstream out;
    try {
        LibraryText(bench.getChips()).write(bench.getSelection().getPorts().front(), out);
    } catch (chips::ToolError const& error) {
        EXPECT_EQ(error.getStatus(), chips::ExitStatus::noStatistics);
        EXPECT_EQ(out.str(), "");
        return std::string("!") + error.what();
    }
    return out.str();
}

class FailedAccessTest : public testing::TestWithParam<unsigned> {};

} // namespace

TEST(UnreadableCounterTest, ARegisterOfAVsc7390ThatIsNeverReadyIsLeftOut) {
    StatisticsBench bench("trap-mixed", {"3.1"});
    ASSERT_THAT(bench.sample().unread, IsEmpty());
    auto& chip = bench.getBoard().getVitesse(3);
    for (unsigned address = 0x50; address <= 0x5B; ++address) {
        chip.setCounter(1, address, 5);
    }
    bench.loseVitesseRead();
    chips::CounterSample const sample = bench.sample();
    ASSERT_EQ(sample.unread.size(), 1U);
    EXPECT_THAT(sample.unread[0], StartsWith("port 3.1: inGoodandBadOctets: "));
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inGoodandBadOctets"), std::nullopt);
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inGoodandBadPackets"), 5U);
    EXPECT_EQ(valuesOf(sample.ports[0]), 11U);

    std::string const metrics = openMetricsOf(sample);
    EXPECT_THAT(metrics, Not(HasSubstr("switch_port_in_good_and_bad_bytes")));
    EXPECT_THAT(metrics, HasSubstr("switch_port_in_good_and_bad_frames_total{"));
    nlohmann::json const json = jsonOf(sample);
    EXPECT_FALSE(json["ports"][0]["counters"].contains("inGoodandBadOctets"));
    EXPECT_EQ(json["ports"][0]["counters"]["inGoodandBadPackets"]["value"], 5);
    EXPECT_EQ(json["unread"].size(), 1U);
}

TEST(UnreadableCounterTest, AFamilyHasThePortsThatCouldBeRead) {
    StatisticsBench bench("trap-mixed", {"3.1", "3.2"});
    ASSERT_THAT(bench.sample().unread, IsEmpty());
    bench.loseVitesseRead();
    std::string const metrics = openMetricsOf(bench.sample());
    std::string const family = "switch_port_in_good_and_bad_bytes";
    EXPECT_THAT(metrics, HasSubstr("# TYPE " + family + " counter\n# UNIT " + family + " bytes\n"));
    EXPECT_THAT(metrics, HasSubstr(family + "_total{switch=\"3\",port=\"2\",chip=\"vsc7390\"} 0\n"));
    EXPECT_THAT(metrics, Not(HasSubstr(family + "_total{switch=\"3\",port=\"1\"")));
}

TEST(UnreadableCounterTest, AStatisticsUnitThatStaysBusyLeavesThePortsOwnRegisters) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.poke("port 8", 0x12, 3);
    chip.hang(MarvellUnit::statistics);
    chips::CounterSample const sample = bench.sample();
    EXPECT_THAT(sample.unread,
                ElementsAre("port 0.8: the counters could not be captured: the statistics unit "
                            "stays busy"));
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inFiltered"), 3U);
    EXPECT_EQ(valuesOf(sample.ports[0]), 3U);
    EXPECT_FALSE(jsonOf(sample)["ports"][0]["counters"].contains("inUnicast"));
}

TEST(UnreadableCounterTest, WhatAnEarlierCaptureLeftIsNotTaken) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.setCounter(8, 4, 1);
    ASSERT_EQ(StatisticsBench::valueOf(bench.sample().ports[0], "inUnicast"), 1U);
    // The capture is lost on its way to the statistics unit.
    chip.failAccess(3);
    chips::CounterSample const sample = bench.sample();
    ASSERT_EQ(sample.unread.size(), 1U);
    EXPECT_THAT(sample.unread[0], StartsWith("port 0.8: the counters could not be captured: "));
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inUnicast"), std::nullopt);
}

TEST_P(FailedAccessTest, CostsTheCounterThatItBelongsTo) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    for (unsigned number = 0; number < 32; ++number) {
        chip.setCounter(8, number, 1 + number);
    }
    chip.failAccess(GetParam());
    chips::CounterSample const sample = bench.sample();
    ASSERT_EQ(sample.unread.size(), 1U);
    EXPECT_THAT(sample.unread[0], HasSubstr("could not be"));
    EXPECT_EQ(valuesOf(sample.ports[0]), 32U);
    for (auto const& value : sample.ports[0].values) {
        // Of the port's own registers, which are 0, there are three; they come in between.
        if (value && *value > 32U) {
            EXPECT_TRUE(*value == (std::uint64_t{2} << 32U | 1U) ||
                        *value == (std::uint64_t{16} << 32U | 15U));
        }
    }
}

// The first counters: accesses 5 and up, five for each half of a counter and three before them.
INSTANTIATE_TEST_SUITE_P(Accesses, FailedAccessTest, testing::Range(5U, 40U));

TEST(UnreadableCounterTest, AChipThatIsGoneHasNoCounters) {
    StatisticsBench bench("trap-mixed", {"0.1", "1.3", "3.1"});
    bench.getBoard().getMarvell(0).unplug();
    bench.getBoard().getVitesse(3).unplug();
    chips::CounterSample const sample = bench.sample();
    ASSERT_EQ(sample.unread.size(), 2U);
    EXPECT_THAT(sample.unread[0], StartsWith("switch 0: no 88e6096 answers"));
    EXPECT_THAT(sample.unread[1], StartsWith("switch 3: no vsc7390 answers"));
    EXPECT_FALSE(sample.ports[0].isRead());
    EXPECT_TRUE(sample.ports[1].isComplete());
    EXPECT_FALSE(sample.ports[2].isRead());
    EXPECT_THAT(openMetricsOf(sample), Not(HasSubstr("vsc7390")));
    EXPECT_EQ(jsonOf(sample)["ports"][2]["counters"], nlohmann::json::object());
}

TEST(UnreadableCounterTest, AChipThatComesBackIsReadAgain) {
    StatisticsBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.unplug();
    EXPECT_FALSE(bench.sample().ports[0].isRead());
    chip.plug();
    EXPECT_TRUE(bench.sample().ports[0].isComplete());
}

TEST(UnreadableCounterTest, TheLibrarysTextIsNotShownWithZerosInIt) {
    StatisticsBench vitesse("trap-mixed", {"3.1"});
    EXPECT_THAT(libraryText(vitesse), StartsWith("inGoodandBadOctets\t000000"));
    vitesse.loseVitesseRead();
    EXPECT_THAT(libraryText(vitesse), StartsWith("!"));
    StatisticsBench marvell("trap-minimal", {"0.8"});
    EXPECT_THAT(libraryText(marvell), StartsWith("inGoodOctets\t0000000000000000"));
    marvell.getBoard().getMarvell(0).hang(MarvellUnit::statistics);
    EXPECT_THAT(libraryText(marvell), HasSubstr("MarvellPort::statsCommand Stats Busy timeout"));
}
