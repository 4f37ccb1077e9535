// What frames leave behind in a VSC7390, and what a write between two frames changes.

#include <set>
#include <vector>

#include "simulation/vsc7390/Forwarding.hpp"
#include "tests/simulation/Vsc7390ForwardingFixture.hpp"

using simulation_test::Vsc7390ForwardingFixture;

namespace {

class Vsc7390ForwardingTest : public Vsc7390ForwardingFixture {};

TEST_F(Vsc7390ForwardingTest, AFrameMeetsAllRulesInTheirOrder) {
    Decision const decision = receive(untagged(broadcast));
    EXPECT_EQ(decision.describe(),
              "VLAN 1: to 0 untagged, 1 untagged, 2 untagged, 4 untagged, 5 untagged, the processor; learnt "
              "(V1 V2 V3 V4 V5 V6 V7 V8 V9 V10 V11 V12)");
    EXPECT_EQ(chip().getForwarding()->getNumberOfPorts(), 24U);
}

TEST_F(Vsc7390ForwardingTest, CountersOfFramesThatComeIn) {
    Frame const bad(untagged(broadcast).getBytes(), Frame::Fcs::bad);
    struct Case {
        unsigned drop;
        Frame frame;
        std::vector<std::uint32_t> expected;
    };
    for (Case const& item : {Case{0, untagged(), {64, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, untagged(broadcast), {64, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, bad, {64, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, untagged(0x0180C2000000), {64, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{4, untagged(), {64, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0}},
                             Case{4, untagged(group), {64, 0, 1, 1, 0, 1, 0, 0, 0, 0, 0, 0}}}) {
        writePort(3, 0x6E, item.drop);
        decide(item.frame);
        EXPECT_EQ(counters(3), std::vector<std::uint32_t>(12, 0)) << "deciding counts nothing";
        receive(item.frame);
        EXPECT_EQ(counters(3), item.expected);
        writePort(3, 0x52, 0);
    }
    writeAnalyser(0x10, 0);
    receive(untagged());
    EXPECT_EQ(chip().getCounter(3, 0x55), 1U);
    writeAnalyser(0x10, 0x8);
    writeAnalyser(0x05, 0x8);
    writeVlan(1, 0);
    receive(untagged());
    EXPECT_EQ(chip().getCounter(3, 0x55), 2U);
    writePort(3, 0x00, 0);
    receive(untagged());
    EXPECT_EQ(chip().getCounter(3, 0x52), 2U) << "the receiver is off";
}

TEST_F(Vsc7390ForwardingTest, CountersOfFramesThatGoOut) {
    writePort(4, 0x24, 0x01);
    receive(untagged());
    EXPECT_EQ(counters(4), (std::vector<std::uint32_t>{0, 68, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(counters(0), (std::vector<std::uint32_t>{0, 64, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
    receive(untagged(broadcast));
    EXPECT_EQ(counters(4), (std::vector<std::uint32_t>{0, 136, 0, 0, 0, 0, 0, 2, 1, 0, 0, 0}));
    EXPECT_EQ(counters(6), std::vector<std::uint32_t>(12, 0));
}

TEST_F(Vsc7390ForwardingTest, CountersGoOnFromWhatATestSetAndWrap) {
    chip().setCounter(3, 0x50, 0xFFFFFFFF);
    receive(untagged());
    EXPECT_EQ(chip().getCounter(3, 0x50), 63U);
    receive(untagged());
    chip().poke("port 3", 0x50, 7);
    EXPECT_EQ(chip().getCounter(3, 0x50), 7U);
    receive(untagged());
    chip().setCounter(3, 0x50, 7);
    EXPECT_EQ(readPort(3, 0x50), 7U);
    receive(untagged());
    writePort(3, 0x52, 0);
    EXPECT_EQ(readPort(3, 0x50), 0U);
    receive(untagged());
    write(system, 0, 0x14, 1);
    EXPECT_EQ(readPort(3, 0x50), 0U) << "a reset of the chip";
}

TEST_F(Vsc7390ForwardingTest, EveryCounterMovesOrIsSaidToStay) {
    writePort(3, 0x6E, 0x02);
    receive(untagged(broadcast));
    receive(tagged(9));
    receive(Frame(untagged().getBytes(), Frame::Fcs::bad));
    std::vector<std::uint32_t> const in = counters(3);
    std::vector<std::uint32_t> const out = counters(4);
    std::set<unsigned> still;
    for (auto const& counter : simulation::vitesse::Forwarding::stillCounters) {
        still.insert(counter.counter);
    }
    for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
        EXPECT_EQ(in[counter - 0x50] + out[counter - 0x50] == 0, still.count(counter) == 1) << counter;
    }
}

TEST_F(Vsc7390ForwardingTest, WhatIsWrittenCountsForTheNextFrame) {
    EXPECT_EQ(portsOf(untagged()), 0x37U);
    chip().stick("analyser", 0x0E, 0, 0x30);
    EXPECT_EQ(portsOf(untagged()), 0x07U);
    chip().stick("analyser", 0x0E, 0, 0);
    chip().poke("port 5", 0x00, 0);
    EXPECT_EQ(portsOf(untagged()), 0x17U);
    chip().setVlanEntry(1, {0x3, false, false, false});
    EXPECT_EQ(portsOf(untagged()), 0x03U);
    write(system, 0, 0x14, 1);
    EXPECT_EQ(end(untagged()), "V1") << "all MACs are off";
    writePort(3, 0x00, on);
    writePort(20, 0x00, on);
    EXPECT_EQ(portsOf(untagged()), 0x100000U);
}

TEST_F(Vsc7390ForwardingTest, LinkAndSpeed) {
    EXPECT_TRUE(chip().getForwarding()->hasLink(3));
    EXPECT_EQ(chip().getForwarding()->getMegabits(3), 1000U);
    EXPECT_FALSE(chip().getForwarding()->hasLink(6));
    EXPECT_EQ(chip().getForwarding()->getMegabits(6), 0U);
    writePort(6, 0x00, 0x10000002);
    EXPECT_TRUE(chip().getForwarding()->hasLink(6)) << "it sends";
    EXPECT_EQ(chip().getForwarding()->getMegabits(6), 100U);
    writePort(6, 0x00, 0x00010002);
    EXPECT_TRUE(chip().getForwarding()->hasLink(6)) << "it gets frames";
    EXPECT_THROW(decide(untagged(), 24), std::out_of_range);
}

} // namespace
