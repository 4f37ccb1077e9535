// Counters of models, read over the board's buses.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "StatisticsBench.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

using chips::CounterSample;
using chips::PortCounters;
using testing::IsEmpty;

TEST(CounterReaderTest, Each88E6096CounterComesFromItsPlace) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    for (unsigned number = 0; number < 32; ++number) {
        chip.setCounter(8, number, 0x10000 + number);
        chip.setCounter(9, number, 7);
    }
    chip.poke("port 8", 0x10, 3);
    chip.poke("port 8", 0x11, 2);
    chip.poke("port 8", 0x12, 0x1234);
    chip.poke("port 8", 0x13, 0x4321);
    chips::CounterSample const sample = bench.sample();
    EXPECT_THAT(sample.unread, IsEmpty());
    ASSERT_EQ(sample.ports.size(), 1U);
    chips::PortCounters const& port = sample.ports[0];
    EXPECT_EQ(port.port.switchId, 0U);
    EXPECT_EQ(port.port.portId, 8U);
    EXPECT_EQ(port.model, "88e6096");
    EXPECT_EQ(StatisticsBench::valueOf(port, "inGoodOctets"), 0x0001000100010000U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "inUnicast"), 0x10004U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outOctets"), 0x0001000F0001000EU);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outMulticast"), 0x10012U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outBroadcast"), 0x10013U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "late"), 0x1001FU);
    EXPECT_EQ(StatisticsBench::valueOf(port, "inDiscards"), 0x20003U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "inFiltered"), 0x1234U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outFiltered"), 0x4321U);
}

TEST(CounterReaderTest, EachVsc7390CounterComesFromItsRegister) {
    StatisticsBench bench("trap-mixed", {"3.20"});
    auto& chip = bench.getBoard().getVitesse(3);
    for (unsigned address = 0x50; address <= 0x5B; ++address) {
        chip.setCounter(20, address, 0xF0000000 + address);
    }
    chips::CounterSample const sample = bench.sample();
    EXPECT_THAT(sample.unread, IsEmpty());
    ASSERT_EQ(sample.ports.size(), 1U);
    chips::PortCounters const& port = sample.ports[0];
    EXPECT_EQ(port.model, "vsc7390");
    EXPECT_EQ(StatisticsBench::valueOf(port, "inGoodandBadOctets"), 0xF0000050U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outGoodandBadOctets"), 0xF0000051U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "inGoodandBadPackets"), 0xF0000052U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "inClassifiedClass3Qos"), 0xF0000056U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outGoodandBadPackets"), 0xF0000057U);
    EXPECT_EQ(StatisticsBench::valueOf(port, "outClassifiedClass3Qos"), 0xF000005BU);
}

TEST(CounterReaderTest, WithoutAPortAllPortsOfTheDocumentAreRead) {
    StatisticsBench bench("trap-mixed", {});
    chips::CounterSample const sample = bench.sample();
    EXPECT_THAT(sample.unread, IsEmpty());
    // Three of 11 ports and one of 24.
    ASSERT_EQ(sample.ports.size(), 57U);
    for (chips::PortCounters const& port : sample.ports) {
        EXPECT_TRUE(port.isComplete()) << port.port;
    }
}

TEST(CounterReaderTest, AUnitThatTakesItsTimeIsWaitedFor) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.setBusyTime(simulation::Marvell88E6096TestSide::CommandUnit::statistics, 2000000);
    chip.setCounter(8, 4, 99);
    chips::CounterSample const sample = bench.sample();
    EXPECT_THAT(sample.unread, IsEmpty());
    EXPECT_EQ(StatisticsBench::valueOf(sample.ports[0], "inUnicast"), 99U);
}
