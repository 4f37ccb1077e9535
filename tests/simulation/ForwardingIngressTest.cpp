// What lets a frame in: rules M1 to M10 of the 88E6096.

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
        auto const decision = receive(2, sized(row.octets, row.fcs, row.isTagged));
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

TEST_F(ForwardingIngressTest, M7VidOfTheFrame) {
    struct Row {
        unsigned mode;
        bool isForced;
        std::optional<unsigned> vid;
        unsigned expected;
    };
    for (Row const& row : {
             Row{0, false, {}, 9},
             {0, false, 0, 9},
             {0, false, 7, 7},
             {0, true, 7, 7},
             {1, false, {}, 9},
             {1, false, 0, 9},
             {1, false, 7, 7},
             {1, true, 7, 9},
             {1, true, {}, 9},
             {3, false, 7, 7},
             {3, true, 7, 9},
         }) {
        write(port0 + 2, 0x07, row.isForced ? 0x1009 : 0x0009);
        setMode(2, row.mode);
        EXPECT_EQ(decide(2, row.vid ? tagged(*row.vid) : untagged()).vid, row.expected) << row.mode;
    }
}

TEST_F(ForwardingIngressTest, M7ForcedVidMayNotNeed8021Q) {
    Options options;
    options.forcedVid = Options::ForcedVid::always;
    restart(options);
    write(port0 + 2, 0x07, 0x1009);
    EXPECT_EQ(decide(2, tagged(7)).vid, 9U);
}

TEST_F(ForwardingIngressTest, M7ModesHitsAndMisses) {
    constexpr unsigned member = 0x7042;
    constexpr unsigned miss = 0x7022;
    struct Row {
        unsigned mode;
        unsigned vid;
        bool passes;
        // What fetching the violation shows; 0 for none.
        unsigned violation;
    };
    // Port 2 is in VLAN 5 and not in VLAN 6; VLAN 7 is not in the VTU.
    for (Row const& row : {Row{0, 5, true, 0},
                           {0, 6, true, 0},
                           {0, 7, true, 0},
                           {1, 5, true, 0},
                           {1, 6, true, member},
                           {1, 7, true, miss},
                           {2, 5, true, 0},
                           {2, 6, true, member},
                           {2, 7, false, miss},
                           {3, 5, true, 0},
                           {3, 6, false, member},
                           {3, 7, false, miss}}) {
        restart();
        addVlan(5, "22222222222");
        addVlan(6, "22322222222");
        setMode(2, row.mode);
        auto const decision = receive(2, tagged(row.vid));
        EXPECT_EQ(decision.isDropped(), !row.passes) << row.mode << ' ' << row.vid;
        EXPECT_EQ(lastRule(decision), row.passes ? "M14" : "M7") << row.mode << ' ' << row.vid;
        EXPECT_EQ(inFiltered(2), row.passes ? 0U : 1U) << row.mode << ' ' << row.vid;
        EXPECT_EQ(read(global1, 0x00) & 0x0020U, row.violation == 0 ? 0U : 0x0020U);
        write(global1, 0x05, 0xF000);
        EXPECT_EQ(read(global1, 0x05), row.violation == 0 ? 0x7000U : row.violation);
        if (row.violation != 0) {
            EXPECT_EQ(read(global1, 0x06), row.vid);
        }
    }
}

TEST_F(ForwardingIngressTest, M7SaysWhy) {
    setMode(3, 3);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "VID 77 is not in the VTU, port 3 is secure");
    setMode(3, 2);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "VID 77 is not in the VTU, port 3 checks VLANs");
    addVlan(77, "22232222222");
    setMode(3, 3);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "port 3 is secure and no member of VLAN 77");
    EXPECT_EQ(read(global1, 0x00) & 0x0020U, 0U) << "a look ahead leaves nothing";
}

TEST_F(ForwardingIngressTest, M7TheFirstViolationStays) {
    setMode(3, 3);
    receive(3, tagged(77));
    receive(3, tagged(78));
    write(global1, 0x05, 0xF000);
    EXPECT_EQ(read(global1, 0x06), 77U);
    EXPECT_EQ(read(global1, 0x00) & 0x0020U, 0U);
}

TEST_F(ForwardingIngressTest, M8DatabaseOfTheVlanOrThePort) {
    addVlan(5, "22222222222");
    setMode(2, 1);
    change(2, 0x05, 0x00FF, 0x0012);
    change(2, 0x06, 0xF000, 0x3000);
    receive(2, tagged(5));
    receive(2, tagged(6, 0, stationB, 0x020000000007));
    EXPECT_EQ(addressData(5, stationA), 0x0047U);
    EXPECT_EQ(addressData(0x123, 0x020000000007), 0x0047U);
}

TEST_F(ForwardingIngressTest, M8StateOfTheVlanOrThePort) {
    struct Row {
        unsigned own;
        char inVlan;
        bool isSidThere;
        bool passes;
    };
    for (Row const& row : {Row{3, '0', true, true},
                           {1, '0', true, false},
                           {3, '1', true, false},
                           {3, '2', true, false},
                           {1, '3', true, true},
                           {2, '3', true, true},
                           {0, '3', true, false},
                           {3, '1', false, true},
                           {1, '3', false, false}}) {
        restart();
        addVlan(5, "22222222222", 9);
        addStates(row.isSidThere ? 9 : 8, std::string("33") + row.inVlan + "33333333");
        setMode(2, 3);
        setState(2, row.own);
        EXPECT_EQ(receive(2, tagged(5)).isDropped(), !row.passes) << row.own << row.inVlan;
        // The same at egress.
        setMode(4, 3);
        EXPECT_EQ((ports(4, tagged(5)) & 0x004U) != 0, row.passes) << row.own << row.inVlan;
        // Not for frames without the VLAN.
        setMode(2, 0);
        EXPECT_EQ(decide(2, tagged(6)).isDropped(), row.own != 3) << row.own << row.inVlan;
    }
}

TEST_F(ForwardingIngressTest, M8OtherChoices) {
    Options options;
    options.disabledPort = Options::DisabledPort::vlanStateGoesFirst;
    options.unknownSid = Options::UnknownSid::blocking;
    options.spanningTreeScope = Options::SpanningTreeScope::ingressOnly;
    restart(options);
    addVlan(5, "22222222222", 9);
    setMode(2, 3);
    EXPECT_EQ(lastRule(decide(2, tagged(5))), "M10");
    addStates(9, "33333133333");
    EXPECT_EQ(ports(2, tagged(5)), everyPort & ~0x004U);
    setState(6, 1);
    EXPECT_EQ(ports(2, tagged(5)), everyPort & ~0x044U);
    // At ingress a disabled port has been stopped by M3 before its VLAN is asked.
    setState(2, 0);
    EXPECT_EQ(lastRule(decide(2, tagged(5))), "M3");
}

TEST_F(ForwardingIngressTest, M9LearnsSources) {
    struct Row {
        unsigned state;
        simulation::EthernetFrame::Address source;
        unsigned association;
        unsigned expected;
    };
    for (Row const& row : {Row{3, stationA, 0x0004, 0x0047},
                           {2, stationA, 0x0004, 0x0047},
                           {1, stationA, 0x0004, 0},
                           {3, group, 0x0004, 0},
                           {3, stationA, 0x0000, 0},
                           {3, stationA, 0x2004, 0},
                           {3, stationA, 0x0300, 0x3007}}) {
        restart();
        setState(2, row.state);
        write(port0 + 2, 0x0B, row.association);
        auto const frame = untagged(stationB, row.source);
        EXPECT_EQ(decide(2, frame).learnt, row.expected != 0);
        EXPECT_EQ(addressData(0, row.source), 0U) << "a look ahead leaves nothing";
        EXPECT_EQ(receive(2, frame).learnt, row.expected != 0);
        EXPECT_EQ(addressData(0, row.source), row.expected) << row.state << ' ' << row.association;
    }
}

TEST_F(ForwardingIngressTest, M9LearnsTrunks) {
    write(port0 + 2, 0x05, 0x4500);
    receive(2, untagged());
    EXPECT_EQ(addressData(0, stationA), 0x8057U);
}

TEST_F(ForwardingIngressTest, M9StationsMove) {
    receive(2, untagged());
    receive(3, untagged());
    EXPECT_EQ(addressData(0, stationA), 0x0087U);
}

TEST_F(ForwardingIngressTest, M9StaticEntriesStay) {
    addAddress(0, stationA, 0x010E);
    EXPECT_FALSE(receive(2, untagged()).learnt);
    EXPECT_EQ(addressData(0, stationA), 0x010EU);
}

TEST_F(ForwardingIngressTest, M9WhoIsHeardStaysYoung) {
    write(global1, 0x0A, 7 << 4);
    receive(2, untagged());
    for (unsigned again = 0; again < 3; ++again) {
        _board->getClock().advanceNanoseconds(100'000'000'000);
        receive(2, untagged());
        EXPECT_EQ(addressData(0, stationA), 0x0047U);
    }
    EXPECT_EQ(ports(3, untagged(stationA, stationB)), 0x004U);
    _board->getClock().advanceNanoseconds(105'000'000'000);
    EXPECT_EQ(ports(3, untagged(stationA, stationB)), everyPort & ~0x008U);
}

TEST_F(ForwardingIngressTest, M9AFullTableLearnsNoMore) {
    write(global1, 0x0A, 7 << 4);
    for (unsigned number = 0; number < 8192; ++number) {
        EXPECT_TRUE(receive(2, untagged(broadcast, 0x020000010000 + number)).learnt);
    }
    EXPECT_FALSE(receive(3, untagged()).learnt);
    EXPECT_TRUE(receive(3, untagged(broadcast, 0x020000010005)).learnt) << "known already";
    EXPECT_EQ(read(global1, 0x00) & 0x0008U, 0x0008U);
    write(global1, 0x0B, 0xF000);
    EXPECT_EQ(read(global1, 0x0B), 0x7010U);
    EXPECT_EQ(read(global1, 0x0F), 0x0001U);
    EXPECT_EQ(read(global1, 0x0C), 0x0003U);
    _board->getClock().advanceNanoseconds(106'000'000'000);
    EXPECT_TRUE(receive(3, untagged()).learnt) << "what is too old makes room";
}

TEST_F(ForwardingIngressTest, M10OnlyForwardingPortsLetFramesIn) {
    for (unsigned state : {1U, 2U, 3U}) {
        setState(2, state);
        auto const decision = receive(2, untagged());
        EXPECT_EQ(decision.isDropped(), state != 3) << state;
        EXPECT_EQ(lastRule(decision), state != 3 ? "M10" : "M14");
    }
    EXPECT_EQ(inFiltered(2), 0U);
    setState(2, 1);
    EXPECT_EQ(decide(2, untagged()).dropReason, "port 2 is blocking in VLAN 1");
}

} // namespace
