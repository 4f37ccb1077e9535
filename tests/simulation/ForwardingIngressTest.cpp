// What lets a frame in: rules M1 to M6 of the 88E6096.

#include "tests/simulation/ForwardingFixture.hpp"

using simulation_test::ForwardingFixture;

namespace {

class ForwardingIngressTest : public ForwardingFixture {};

constexpr std::uint32_t everyPort = 0x7FF;

TEST_F(ForwardingIngressTest, M1NeedsLink) {
    EXPECT_EQ(ports(2, untagged()), everyPort & ~0x004U);
    chip().unplugLink(2);
    EXPECT_EQ(decide(2, untagged()).dropReason, "port 2 has no link");
    EXPECT_EQ(lastRule(receive(2, untagged())), "M1");
    EXPECT_EQ(counter(2, 0x04), 0U);
    // Forced up, forced down, and the level of a port that does not follow its PHY.
    write(port0 + 2, 0x01, 0x0033);
    EXPECT_EQ(ports(2, untagged()), everyPort & ~0x004U);
    chip().plugLink(2);
    write(port0 + 2, 0x01, 0x0013);
    EXPECT_EQ(ports(2, untagged()), 0U);
    write(port0 + 2, 0x01, 0x0003);
    EXPECT_EQ(ports(2, untagged()), everyPort & ~0x004U);
    write(port0 + 2, 0x00, 0x0000);
    EXPECT_EQ(ports(2, untagged()), 0U);
    chip().setLinkLevel(2, true);
    EXPECT_EQ(ports(2, untagged()), everyPort & ~0x004U);
    phyWrite(3, 0, 0x3900);
    EXPECT_EQ(ports(3, untagged()), 0U);
}

TEST_F(ForwardingIngressTest, M1SpeedOfThePort) {
    chip().plugLink(9, 1000, true);
    EXPECT_EQ(chip().getForwarding()->getMegabits(9), 1000U);
    EXPECT_EQ(chip().getForwarding()->getMegabits(2), 100U);
    chip().plugLink(2, 10, false);
    EXPECT_EQ(chip().getForwarding()->getMegabits(2), 10U);
    chip().unplugLink(2);
    EXPECT_EQ(chip().getForwarding()->getMegabits(2), 0U);
    EXPECT_FALSE(chip().getForwarding()->hasLink(2));
    EXPECT_TRUE(chip().getForwarding()->hasLink(9));
}

constexpr auto good = simulation::EthernetFrame::Fcs::good;
constexpr auto bad = simulation::EthernetFrame::Fcs::bad;

TEST_F(ForwardingIngressTest, M2LengthsAndFcs) {
    struct Row {
        std::size_t octets;
        simulation::EthernetFrame::Fcs fcs;
        bool isTagged;
        bool isLong;
        unsigned counter;
        bool passes;
    };
    for (Row const& row : {
             Row{63, good, false, false, 0x18, false},
             {64, good, false, false, 0x04, true},
             {1518, good, false, false, 0x04, true},
             {1519, good, false, false, 0x1A, false},
             {1522, good, true, false, 0x04, true},
             {1523, good, true, false, 0x1A, false},
             {1632, good, false, true, 0x04, true},
             {1633, good, false, true, 0x1A, false},
             {63, bad, false, false, 0x19, false},
             {64, bad, false, false, 0x1D, false},
             {1518, bad, false, false, 0x1D, false},
             {1519, bad, false, false, 0x1B, false},
         }) {
        restart();
        write(global1, 0x04, row.isLong ? 0x0400 : 0);
        auto const decision = receive(2, sized(row.octets, row.fcs, row.isTagged ? tagged(1) : untagged()));
        EXPECT_EQ(decision.isDropped(), !row.passes) << row.octets;
        EXPECT_EQ(counter(2, row.counter), 1U) << row.octets;
        EXPECT_EQ(counter(2, row.passes ? 0x00 : 0x02), row.octets);
        EXPECT_EQ(counter(2, row.passes ? 0x02 : 0x00), 0U);
        EXPECT_EQ(decision.rules.size() == 2, !row.passes);
        EXPECT_EQ(decision.learnt, row.passes);
    }
}

TEST_F(ForwardingIngressTest, M2WhatGoodFramesCount) {
    receive(2, untagged());
    receive(2, untagged(group));
    receive(2, untagged(0x01005E000001));
    receive(2, untagged(0x0180C2000000));
    receive(2, untagged(broadcast));
    receive(2, Frame::make(0x0180C2000001, stationA, 0x8808));
    EXPECT_EQ(counter(2, 0x04), 1U);
    EXPECT_EQ(counter(2, 0x07), 3U);
    EXPECT_EQ(counter(2, 0x06), 1U);
    EXPECT_EQ(counter(2, 0x16), 1U);
    EXPECT_EQ(counter(2, 0x00), 6U * 64U);
    EXPECT_EQ(counter(2, 0x08), 6U);
}

TEST_F(ForwardingIngressTest, M2Histogram) {
    struct Row {
        std::size_t octets;
        unsigned counter;
    };
    for (Row const& row : {Row{64, 0x08},
                           {65, 0x09},
                           {127, 0x09},
                           {128, 0x0A},
                           {255, 0x0A},
                           {256, 0x0B},
                           {511, 0x0B},
                           {512, 0x0C},
                           {1023, 0x0C},
                           {1024, 0x0D},
                           {1518, 0x0D}}) {
        restart();
        receive(2, sized(row.octets));
        EXPECT_EQ(counter(2, row.counter), 1U) << row.octets;
        EXPECT_EQ(counter(3, row.counter), 1U) << row.octets;
    }
}

TEST_F(ForwardingIngressTest, M2OctetsHave64Bits) {
    chip().setCounter(2, 0x00, 0xFFFFFFFF);
    chip().setCounter(3, 0x0E, 0xFFFFFFFF);
    receive(2, untagged());
    EXPECT_EQ(counter(2, 0x00), 63U);
    EXPECT_EQ(counter(2, 0x01), 1U);
    EXPECT_EQ(counter(3, 0x0E), 63U);
    EXPECT_EQ(counter(3, 0x0F), 1U);
}

TEST_F(ForwardingIngressTest, M2PauseEndsAtTheMac) {
    auto const pause = receive(2, Frame::make(0x0180C2000001, stationA, 0x8808));
    EXPECT_TRUE(pause.isDropped());
    EXPECT_EQ(lastRule(pause), "M2");
    EXPECT_FALSE(receive(2, Frame::make(0x0180C2000001, stationA, 0x8809)).isDropped());
}

TEST_F(ForwardingIngressTest, M2NobodyKnowsWhatIgnoredChecksLetThrough) {
    change(2, 0x08, 0x8000, 0x8000);
    EXPECT_TRUE(decide(2, sized(64, bad)).isRefused());
    EXPECT_FALSE(decide(2, sized(64, good)).isRefused());
}

TEST_F(ForwardingIngressTest, M3ADisabledPortTakesNothing) {
    for (unsigned state = 1; state < 4; ++state) {
        setState(2, state);
        EXPECT_NE(lastRule(decide(2, untagged())), "M3") << state;
    }
    setState(2, 0);
    auto const decision = receive(2, untagged());
    EXPECT_EQ(decision.dropReason, "port 2 is disabled");
    EXPECT_EQ(lastRule(decision), "M3");
    EXPECT_EQ(counter(2, 0x04), 0U);
    Options options;
    options.disabledCounting = Options::DisabledCounting::on;
    restart(options);
    setState(2, 0);
    receive(2, untagged());
    EXPECT_EQ(counter(2, 0x04), 1U);
}

TEST_F(ForwardingIngressTest, M4OtherFramesAreRefused) {
    // DSA, provider, EtherType DSA, header, filter by source address.
    for (unsigned bits : {0x0100U, 0x0200U, 0x0300U, 0x0800U, 0x4000U, 0x8000U}) {
        change(2, 0x04, 0xCB00, bits);
        auto const decision = receive(2, untagged());
        EXPECT_TRUE(decision.isRefused()) << bits;
        EXPECT_TRUE(decision.isDropped()) << bits;
        EXPECT_EQ(lastRule(decision), "M4") << bits;
    }
    change(2, 0x04, 0xCB00, 0);
    EXPECT_FALSE(decide(2, untagged()).isRefused());
    EXPECT_EQ(addressData(0, stationA), 0U);
}

TEST_F(ForwardingIngressTest, M4NoFrameLeavesInAFormThatIsNotModelled) {
    change(5, 0x04, 0x0300, 0x0100);
    auto const decision = decide(2, untagged());
    EXPECT_TRUE(decision.isRefused());
    EXPECT_EQ(decision.getPorts(), 0U);
    addAddress(0, stationB, 0x008E);
    EXPECT_EQ(ports(2, untagged()), 0x008U);
}

TEST_F(ForwardingIngressTest, M5DiscardsTaggedOrUntagged) {
    struct Row {
        unsigned bits;
        std::optional<unsigned> vid;
        bool passes;
    };
    for (Row const& row : {Row{0x0200, 7, false},
                           {0x0200, 0, true},
                           {0x0200, {}, true},
                           {0x0100, 7, true},
                           {0x0100, 0, false},
                           {0x0100, {}, false},
                           {0x0300, 7, false},
                           {0x0300, {}, false},
                           {0, 7, true},
                           {0, {}, true}}) {
        restart();
        change(2, 0x08, 0x0300, row.bits);
        auto const decision = receive(2, row.vid ? tagged(*row.vid) : untagged());
        EXPECT_EQ(decision.isDropped(), !row.passes) << row.bits;
        EXPECT_EQ(lastRule(decision), row.passes ? "M14" : "M5") << row.bits;
        EXPECT_EQ(inFiltered(2), row.passes ? 0U : 1U);
        EXPECT_EQ(counter(2, 0x04), 1U);
        EXPECT_EQ(decision.learnt, row.passes);
    }
}

TEST_F(ForwardingIngressTest, M5APriorityTagMayCountAsTag) {
    Options options;
    options.priorityTag = Options::PriorityTag::countsAsTagged;
    restart(options);
    change(2, 0x08, 0x0300, 0x0200);
    EXPECT_EQ(lastRule(decide(2, tagged(0))), "M5");
}

TEST_F(ForwardingIngressTest, M6ManagementGoesToTheCpuOnly) {
    addVlan(1, "33333333333");
    setMode(2, 3);
    write(global2, 0x03, 0x0001);
    write(global2, 0x02, 0x0002);
    write(global1, 0x1A, 0x00A0);
    auto const bpdu = untagged(0x0180C2000000);
    auto const registration = untagged(0x0180C2000021);
    // Nothing does without RSVD2CPU.
    EXPECT_EQ(lastRule(decide(2, bpdu)), "M7");
    write(global2, 0x05, 0x0008);
    for (unsigned state = 1; state < 4; ++state) {
        setState(2, state);
        EXPECT_EQ(ports(2, bpdu), 0x400U) << state;
        EXPECT_EQ(ports(2, registration), 0x400U) << state;
        EXPECT_EQ(lastRule(decide(2, bpdu)), "M6");
    }
    EXPECT_EQ(ports(2, untagged(0x0180C2000002)), 0U);
    EXPECT_EQ(ports(2, untagged(0x0180C2000020)), 0U);
    setState(2, 0);
    EXPECT_EQ(lastRule(decide(2, bpdu)), "M3");
    setState(2, 3);
    setState(10, 1);
    EXPECT_EQ(ports(2, bpdu), 0x400U);
    setState(10, 0);
    EXPECT_EQ(ports(2, bpdu), 0U);
    setState(10, 3);
    EXPECT_EQ(ports(10, bpdu), 0U);
    write(global1, 0x1A, 0x00F0);
    EXPECT_EQ(ports(2, bpdu), 0U);
    chip().unplugLink(10);
    write(global1, 0x1A, 0x00A0);
    EXPECT_EQ(ports(2, bpdu), 0U);
}

TEST_F(ForwardingIngressTest, M6OtherwiseAnOrdinaryGroup) {
    EXPECT_EQ(ports(2, untagged(0x0180C2000000)), everyPort & ~0x004U);
}

// With the option by which it restores registers.
TEST_F(ForwardingIngressTest, AResetBySoftwareCountsForTheNextFrame) {
    Options options;
    options.softwareReset = Options::SoftwareReset::restoresDefaults;
    restart(options);
    setState(2, 0);
    EXPECT_EQ(ports(2, untagged()), 0U);
    write(global1, 0x04, 0x8000);
    EXPECT_EQ(ports(2, untagged()), everyPort & ~0x004U);
}

} // namespace
