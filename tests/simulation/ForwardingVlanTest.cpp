// In which VLAN a frame is, and what is learnt of it: rules M7 to M10 of the 88E6096.

#include "tests/simulation/ForwardingFixture.hpp"

using simulation_test::ForwardingFixture;

namespace {

class ForwardingVlanTest : public ForwardingFixture {};

constexpr std::uint32_t everyEgress = 0x7FF;

TEST_F(ForwardingVlanTest, M7VidOfTheFrame) {
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

TEST_F(ForwardingVlanTest, M7ForcedVidMayNotNeed8021Q) {
    Options options;
    options.forcedVid = Options::ForcedVid::always;
    restart(options);
    write(port0 + 2, 0x07, 0x1009);
    EXPECT_EQ(decide(2, tagged(7)).vid, 9U);
}

TEST_F(ForwardingVlanTest, M7ModesHitsAndMisses) {
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

TEST_F(ForwardingVlanTest, M7SaysWhy) {
    setMode(3, 3);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "VID 77 is not in the VTU, port 3 is secure");
    setMode(3, 2);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "VID 77 is not in the VTU, port 3 checks VLANs");
    addVlan(77, "22232222222");
    setMode(3, 3);
    EXPECT_EQ(decide(3, tagged(77)).dropReason, "port 3 is secure and no member of VLAN 77");
    EXPECT_EQ(read(global1, 0x00) & 0x0020U, 0U) << "a look ahead leaves nothing";
}

TEST_F(ForwardingVlanTest, M7TheFirstViolationStays) {
    setMode(3, 3);
    receive(3, tagged(77));
    receive(3, tagged(78));
    write(global1, 0x05, 0xF000);
    EXPECT_EQ(read(global1, 0x06), 77U);
    EXPECT_EQ(read(global1, 0x00) & 0x0020U, 0U);
}

TEST_F(ForwardingVlanTest, M8DatabaseOfTheVlanOrThePort) {
    addVlan(5, "22222222222");
    setMode(2, 1);
    change(2, 0x05, 0x00FF, 0x0012);
    change(2, 0x06, 0xF000, 0x3000);
    receive(2, tagged(5));
    receive(2, tagged(6, 0, stationB, 0x020000000007));
    EXPECT_EQ(addressData(5, stationA), 0x0047U);
    EXPECT_EQ(addressData(0x123, 0x020000000007), 0x0047U);
}

TEST_F(ForwardingVlanTest, M8StateOfTheVlanOrThePort) {
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

TEST_F(ForwardingVlanTest, M8OtherChoices) {
    Options options;
    options.disabledPort = Options::DisabledPort::vlanStateGoesFirst;
    options.unknownSid = Options::UnknownSid::blocking;
    options.spanningTreeScope = Options::SpanningTreeScope::ingressOnly;
    restart(options);
    addVlan(5, "22222222222", 9);
    setMode(2, 3);
    EXPECT_EQ(lastRule(decide(2, tagged(5))), "M10");
    addStates(9, "33333133333");
    EXPECT_EQ(ports(2, tagged(5)), everyEgress & ~0x004U);
    setState(6, 1);
    EXPECT_EQ(ports(2, tagged(5)), everyEgress & ~0x044U);
    // At ingress a disabled port has been stopped by M3 before its VLAN is asked.
    setState(2, 0);
    EXPECT_EQ(lastRule(decide(2, tagged(5))), "M3");
}

TEST_F(ForwardingVlanTest, M9LearnsSources) {
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

TEST_F(ForwardingVlanTest, M9LearnsTrunks) {
    write(port0 + 2, 0x05, 0x4500);
    receive(2, untagged());
    EXPECT_EQ(addressData(0, stationA), 0x8057U);
}

TEST_F(ForwardingVlanTest, M9StationsMove) {
    receive(2, untagged());
    receive(3, untagged());
    EXPECT_EQ(addressData(0, stationA), 0x0087U);
}

TEST_F(ForwardingVlanTest, M9StaticEntriesStay) {
    addAddress(0, stationA, 0x010E);
    EXPECT_FALSE(receive(2, untagged()).learnt);
    EXPECT_EQ(addressData(0, stationA), 0x010EU);
}

TEST_F(ForwardingVlanTest, M9WhoIsHeardStaysYoung) {
    write(global1, 0x0A, 7 << 4);
    receive(2, untagged());
    for (unsigned again = 0; again < 3; ++again) {
        _board->getClock().advanceNanoseconds(100'000'000'000);
        receive(2, untagged());
        EXPECT_EQ(addressData(0, stationA), 0x0047U);
    }
    EXPECT_EQ(ports(3, untagged(stationA, stationB)), 0x004U);
    _board->getClock().advanceNanoseconds(105'000'000'000);
    EXPECT_EQ(ports(3, untagged(stationA, stationB)), everyEgress & ~0x008U);
}

TEST_F(ForwardingVlanTest, M9AFullTableLearnsNoMore) {
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

TEST_F(ForwardingVlanTest, M9AFullTableGetsRoomByTimeByAgeTimeAndByCommands) {
    std::uint64_t const second = 1'000'000'000;
    write(global1, 0x0A, 7 << 4);
    for (unsigned number = 0; number < 8192; ++number) {
        receive(2, untagged(broadcast, 0x020000010000 + number));
    }
    addAddress(0, 0x020000010000, 0); // gone
    EXPECT_TRUE(receive(3, untagged(broadcast, 0x020000020000)).learnt);
    EXPECT_FALSE(receive(3, untagged(broadcast, 0x020000020001)).learnt);
    addAddress(0, 0x020000010001, 0x0041); // the oldest age
    EXPECT_FALSE(receive(3, untagged(broadcast, 0x020000020001)).learnt);
    _board->getClock().advanceNanoseconds(16 * second);
    EXPECT_TRUE(receive(3, untagged(broadcast, 0x020000020001)).learnt);
    EXPECT_FALSE(receive(3, untagged(broadcast, 0x020000020002)).learnt);
    write(global1, 0x0A, 1 << 4);
    EXPECT_FALSE(receive(3, untagged(broadcast, 0x020000020002)).learnt);
    _board->getClock().advanceNanoseconds(16 * second);
    EXPECT_TRUE(receive(3, untagged(broadcast, 0x020000020002)).learnt);
}

TEST_F(ForwardingVlanTest, M10OnlyForwardingPortsLetFramesIn) {
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
