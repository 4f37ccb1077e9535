// What reading counters does to the chips.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "StatisticsBench.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/AccessLog.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/statistics/LibraryText.hpp"

using simulation::AccessLog;
using switchctl::statistics::LibraryText;
using switchctl::statistics::PortSelection;
using testing::ElementsAre;

namespace {

/// Names of the registers that were written from an entry of the log on.
std::set<std::string> writtenSince(StatisticsBench& bench, std::size_t first) {
    std::set<std::string> names;
    for (AccessLog::Entry const& entry : bench.getBoard().getLog().getEntries(first)) {
        if (entry.kind == AccessLog::Kind::write) {
            names.insert(entry.registerName);
        }
    }
    return names;
}

std::string misuseOf(StatisticsBench& bench) {
    std::ostringstream text;
    bench.getBoard().getMisuse().print(text);
    return text.str();
}

void writeLibraryText(StatisticsBench& bench) {
    std::ostringstream out;
    for (PortSelection::Port const& port : bench.getSelection().getPorts()) {
        LibraryText(bench.getChips()).write(port, out);
    }
}

} // namespace

TEST(HarmlessStatisticsTest, SamplingWritesToTheStatisticsUnitAndTheBusSetUpOnly) {
    StatisticsBench bench("trap-mixed", {});
    bench.getBoard().getMisuse().clear();
    std::size_t const before = bench.getBoard().getLog().getSize();
    bench.sample();
    bench.sample();
    EXPECT_THAT(writtenSince(bench, before), ElementsAre("BusSetUp", "StatsOperation"));
    EXPECT_EQ(misuseOf(bench), "");
}

TEST(HarmlessStatisticsTest, SamplingClearsNoCounter) {
    StatisticsBench bench("trap-mixed", {"0.1", "3.1"});
    bench.getBoard().getMarvell(0).setCounter(1, 4, 11);
    bench.getBoard().getVitesse(3).setCounter(1, 0x52, 22);
    bench.sample();
    auto const sample = bench.sample();
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inUnicast"), 11U);
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[1], "inGoodandBadPackets"), 22U);
}

TEST(HarmlessStatisticsTest, SamplingKeepsTheHistogramsSetting) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    constexpr unsigned statsOperation = 0x1D;
    // Frames received only: bits 11 and 10 are 01.
    bench.getBoard().getMarvell(0).poke("global 1", statsOperation, 0x0400);
    bench.sample();
    EXPECT_EQ(bench.getBoard().getMarvell(0).peek("global 1", statsOperation) & 0x0C00U, 0x0400U);
}

TEST(HarmlessStatisticsTest, TheLibrarysTextSetsNothingUp) {
    StatisticsBench bench("trap-mixed", {"0.1", "3.1"});
    bench.getBoard().getMisuse().clear();
    std::size_t const before = bench.getBoard().getLog().getSize();
    writeLibraryText(bench);
    EXPECT_THAT(writtenSince(bench, before), ElementsAre("BusSetUp", "C_RX_PACKETS", "StatsOperation"));
    EXPECT_EQ(misuseOf(bench), "");
}

TEST(HarmlessStatisticsTest, TheLibrarysTextClearsTheCountersOfAVsc7390) {
    StatisticsBench bench("trap-mixed", {"0.1", "3.1"});
    bench.getBoard().getMarvell(0).setCounter(1, 4, 11);
    bench.getBoard().getVitesse(3).setCounter(1, 0x50, 22);
    writeLibraryText(bench);
    auto const sample = bench.sample();
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inUnicast"), 11U);
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[1], "inGoodandBadOctets"), 0U);
}
