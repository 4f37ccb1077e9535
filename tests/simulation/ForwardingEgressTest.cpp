// Where a frame leaves, and as what: rules M11 to M14 of the 88E6096, and what a snapshot has to notice.

#include <optional>
#include <string_view>
#include <vector>

#include "tests/simulation/ForwardingFixture.hpp"

using simulation_test::ForwardingFixture;

namespace {

constexpr std::uint32_t all = 0x7FF;
constexpr std::uint32_t allBut2 = 0x7FB;

class ForwardingEgressTest : public ForwardingFixture {
protected:
    /// The port's copy of a frame.
    Decision::Egress copy(unsigned from, unsigned to, Frame const& frame) {
        Decision const decision = decide(from, frame);
        EXPECT_NE(decision.find(to), nullptr) << decision.describe();
        return decision.find(to) == nullptr ? Decision::Egress{to, Decision::Form::asReceived, frame}
                                            : *decision.find(to);
    }
};

TEST_F(ForwardingEgressTest, M11KnownAddresses) {
    addAddress(0, stationB, 0x0201);
    addAddress(0, group, 0x00A7);
    EXPECT_EQ(ports(2, untagged()), 0x020U);
    EXPECT_EQ(ports(2, untagged(group)), 0x00AU);
    // The port does not look up addresses.
    change(2, 0x08, 0x0080, 0);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    change(2, 0x08, 0x0080, 0x0080);
    // Another FID.
    change(2, 0x06, 0xF000, 0x1000);
    EXPECT_EQ(ports(2, untagged()), allBut2);
}

TEST_F(ForwardingEgressTest, M11AnAddressWithoutPorts) {
    addAddress(0, stationB, 0x000E);
    auto const decision = decide(2, untagged());
    EXPECT_EQ(lastRule(decision), "M11");
    EXPECT_EQ(decision.dropReason, "the destination's address leads to no port");
}

TEST_F(ForwardingEgressTest, M11TrunksOfTheTable) {
    // Trunk 5 has ports 3 and 4.
    write(global2, 0x08, 0x8000 | 5 << 11 | 0x018);
    addAddress(0, stationB, 0x8057);
    EXPECT_EQ(ports(2, untagged()), 0x018U);
}

TEST_F(ForwardingEgressTest, M11UnknownAddressesAsEachPortFloods) {
    struct Row {
        unsigned floods;
        bool unicast;
        bool groups;
    };
    for (Row const& row : {Row{0, false, false}, {1, true, false}, {2, false, true}, {3, true, true}}) {
        change(6, 0x04, 0x000C, row.floods << 2);
        EXPECT_EQ((ports(2, untagged()) & 0x040U) != 0, row.unicast) << row.floods;
        EXPECT_EQ((ports(2, untagged(group)) & 0x040U) != 0, row.groups) << row.floods;
        EXPECT_EQ((ports(2, untagged(0x01005E000001)) & 0x040U) != 0, row.groups) << row.floods;
        EXPECT_EQ((ports(2, untagged(broadcast)) & 0x040U) != 0, row.groups) << row.floods;
    }
    // What the ingress port floods does not matter.
    change(2, 0x04, 0x000C, 0);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    for (unsigned port = 0; port < 11; ++port) {
        change(port, 0x04, 0x000C, 0);
    }
    EXPECT_EQ(lastRule(decide(2, untagged())), "M11");
}

TEST_F(ForwardingEgressTest, M12VlanTableInEveryMode) {
    addVlan(1, "22222222222");
    for (unsigned mode = 0; mode < 4; ++mode) {
        setMode(2, mode);
        change(2, 0x06, 0x07FF, 0x0018);
        EXPECT_EQ(ports(2, untagged()), 0x018U) << mode;
        change(2, 0x06, 0x07FF, 0x0000);
        EXPECT_EQ(lastRule(decide(2, untagged())), "M12") << mode;
    }
}

TEST_F(ForwardingEgressTest, M12VlanTableMayMatterWithoutAVlanOnly) {
    Options options;
    options.vlanTableScope = Options::VlanTableScope::withoutVtuOnly;
    restart(options);
    addVlan(1, "22222222222");
    change(2, 0x06, 0x07FF, 0x0018);
    EXPECT_EQ(ports(2, untagged()), 0x018U);
    setMode(2, 1);
    EXPECT_EQ(ports(2, untagged()), all);
    EXPECT_EQ(ports(2, tagged(9)), 0x018U);
}

TEST_F(ForwardingEgressTest, M12OnlyTheOwnBitKeepsAFrameFromItsPort) {
    EXPECT_EQ(ports(2, untagged()), allBut2);
    change(2, 0x06, 0x07FF, 0x07FF);
    EXPECT_EQ(ports(2, untagged()), all);
    Options options;
    options.ownPort = Options::OwnPort::never;
    restart(options);
    change(2, 0x06, 0x07FF, 0x07FF);
    EXPECT_EQ(ports(2, untagged()), allBut2);
}

TEST_F(ForwardingEgressTest, M12MembersOnAHit) {
    addVlan(5, "03212333333");
    setMode(2, 3);
    EXPECT_EQ(ports(2, tagged(5)), 0x019U);
    setMode(2, 0);
    EXPECT_EQ(ports(2, tagged(5)), allBut2);
}

TEST_F(ForwardingEgressTest, M12TheModeOfTheEgressPortDoesNotMatter) {
    setMode(3, 3);
    setMode(4, 2);
    setMode(5, 1);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    Options options;
    options.egressCheck = Options::EgressCheck::withoutVtuHit;
    restart(options);
    setMode(3, 3);
    setMode(4, 2);
    setMode(5, 1);
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x018U);
}

TEST_F(ForwardingEgressTest, M12TrunkMasksByHash) {
    // The hash is 3: addresses end in 1 and 2.
    write(global2, 0x07, 0x8000 | 3 << 12 | 0x030);
    EXPECT_EQ(ports(2, untagged()), 0x030U);
    EXPECT_EQ(ports(2, untagged(stationB, 0x020000000003)), allBut2);
    EXPECT_EQ(ports(2, untagged(stationB, 0x020000000009)), 0x030U);
    write(global2, 0x07, 0x8000 | 3 << 12);
    EXPECT_EQ(decide(2, untagged()).dropReason, "the trunk mask of port 2 left no port");
}

TEST_F(ForwardingEgressTest, M12TheChipsHashTakesAllOfTheAddresses) {
    for (unsigned hash = 0; hash < 8; ++hash) {
        write(global2, 0x07, 0x8800 | hash << 12 | 1U << (hash + 3));
    }
    auto const one = ports(2, untagged(0x020000000002, 0x020000000001));
    auto const other = ports(2, untagged(0x020000000102, 0x020000000001));
    EXPECT_NE(one, other);
    write(global2, 0x07, 0x8000 | 1U << 3);
    EXPECT_EQ(ports(2, untagged(0x020000000002, 0x020000000001)),
              ports(2, untagged(0x020000000102, 0x020000000001)));
}

TEST_F(ForwardingEgressTest, M12ATunnelSkipsVlansForStaticAddresses) {
    struct Row {
        unsigned tunnel;
        simulation::EthernetFrame::Address to;
        unsigned entry;
        std::uint32_t expected;
    };
    for (Row const& row : {Row{0x0080, stationB, 0x028E, 0x028},
                           {0x0000, stationB, 0x028E, 0x008},
                           {0x0080, stationB, 0x0287, 0x008},
                           {0x0080, group, 0x028E, 0x008}}) {
        restart();
        // Port 5 is no member, and VLANTable has port 3 only.
        addVlan(5, "22222322222");
        setMode(2, 3);
        change(2, 0x06, 0x07FF, 0x0008);
        change(2, 0x04, 0x0080, row.tunnel);
        addAddress(5, row.to, row.entry);
        EXPECT_EQ(ports(2, tagged(5, 0, row.to)), row.expected) << row.tunnel << ' ' << row.entry;
    }
}

TEST_F(ForwardingEgressTest, M13LinkAndStateOfThePort) {
    chip().unplugLink(3);
    for (unsigned state = 0; state < 3; ++state) {
        setState(4 + state, state);
    }
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x078U);
    addAddress(0, stationB, 0x008E);
    auto const decision = decide(2, untagged());
    EXPECT_EQ(lastRule(decision), "M13");
    EXPECT_EQ(decision.dropReason, "no port that it could leave by has link and forwards");
}

TEST_F(ForwardingEgressTest, M13CountsWhatMembershipTakesFromAKnownAddress) {
    addVlan(5, "22222322222");
    setMode(2, 3);
    receive(2, tagged(5));
    EXPECT_EQ(outFiltered(5), 0U) << "flooded";
    addAddress(5, stationB, 0x028E);
    EXPECT_EQ(receive(2, tagged(5)).getPorts(), 0x008U);
    EXPECT_EQ(outFiltered(5), 1U);
    EXPECT_EQ(outFiltered(3), 0U);
    EXPECT_EQ(inFiltered(2), 0U);
    // VLANTable had taken it away before.
    change(2, 0x06, 0x07FF, 0x0008);
    receive(2, tagged(5));
    EXPECT_EQ(outFiltered(5), 1U);
}

TEST_F(ForwardingEgressTest, M14FormByTheVlan) {
    using Form = Decision::Form;
    addVlan(5, "01222222222");
    setMode(2, 3);
    change(0, 0x04, 0x3000, 0x1000);
    auto const frame = tagged(5, 6);
    EXPECT_EQ(copy(2, 0, frame).form, Form::asReceived);
    EXPECT_EQ(copy(2, 0, frame).frame, frame);
    EXPECT_EQ(copy(2, 1, frame).form, Form::untagged);
    EXPECT_EQ(copy(2, 1, frame).frame.getTag(), std::nullopt);
    EXPECT_EQ(copy(2, 3, frame).form, Form::tagged);
    EXPECT_EQ(copy(2, 3, frame).frame, frame);
    // An untagged frame of the port's VLAN 5, priority 3.
    write(port0 + 2, 0x07, 0x6005);
    EXPECT_EQ(copy(2, 0, untagged()).frame, untagged());
    EXPECT_EQ(copy(2, 1, untagged()).frame, untagged());
    EXPECT_EQ(copy(2, 3, untagged()).frame, tagged(5, 3));
    // A tag that has a priority only.
    EXPECT_EQ(copy(2, 0, tagged(0, 4)).frame, tagged(0, 4));
    EXPECT_EQ(copy(2, 3, tagged(0, 4)).frame, tagged(5, 4));
}

TEST_F(ForwardingEgressTest, M14FormByThePort) {
    using Form = Decision::Form;
    struct Row {
        unsigned mode;
        Form form;
        simulation::EthernetFrame ofUntagged;
        simulation::EthernetFrame ofTagged;
    };
    write(port0 + 2, 0x07, 0x6009);
    for (Row const& row : {Row{0, Form::asReceived, untagged(), tagged(7, 1)},
                           {1, Form::untagged, untagged(), tagged(7, 1).withTagPopped()},
                           {2, Form::tagged, tagged(9, 3), tagged(7, 1)},
                           {3, Form::tagAdded, tagged(9, 3), tagged(7, 1).withTagPushed({7, 1, false})}}) {
        change(3, 0x04, 0x3000, row.mode << 12);
        EXPECT_EQ(copy(2, 3, untagged()).form, row.form);
        EXPECT_EQ(copy(2, 3, untagged()).frame, row.ofUntagged) << row.mode;
        EXPECT_EQ(copy(2, 3, tagged(7, 1)).frame, row.ofTagged) << row.mode;
    }
}

TEST_F(ForwardingEgressTest, M14CountsWhatLeaves) {
    change(3, 0x04, 0x3000, 0x2000);
    receive(2, untagged());
    receive(2, untagged(group));
    receive(2, untagged(broadcast));
    for (unsigned port : {3U, 4U}) {
        EXPECT_EQ(counter(port, 0x10), 1U);
        EXPECT_EQ(counter(port, 0x12), 1U);
        EXPECT_EQ(counter(port, 0x13), 1U);
    }
    // Port 3 sends a tag, too: 68 bytes.
    EXPECT_EQ(counter(3, 0x0E), 3U * 68U);
    EXPECT_EQ(counter(3, 0x09), 3U);
    EXPECT_EQ(counter(4, 0x0E), 3U * 64U);
    EXPECT_EQ(counter(4, 0x08), 3U);
    EXPECT_EQ(counter(2, 0x10), 0U);
    decide(2, untagged());
    EXPECT_EQ(counter(4, 0x10), 1U) << "a look ahead leaves nothing";
}

TEST_F(ForwardingEgressTest, EveryRuleThatIsAskedSaysSo) {
    std::string_view const expected[] = {"M1", "M2", "M3",  "M4",  "M5",  "M6",  "M7",
                                         "M8", "M9", "M10", "M11", "M12", "M13", "M14"};
    EXPECT_EQ(decide(2, untagged()).rules, simulation::RuleNumbers(expected));
}

// Each kind of write, and what it has to change in a decision that was made before it.
TEST_F(ForwardingEgressTest, ASnapshotNoticesEveryKindOfChange) {
    EXPECT_EQ(ports(2, untagged()), allBut2);
    setState(3, 1);
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x008U);
    chip().poke("port 3", 0x04, 0x007F);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    chip().stick("port 3", 0x04, 0, 0x0003);
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x008U);
    chip().stick("port 3", 0x04, 0, 0);
    phyWrite(3, 0, 0x3900);
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x008U);
    phyWrite(3, 0, 0x3100);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    chip().unplugLink(9);
    EXPECT_EQ(ports(2, untagged()), allBut2 & ~0x200U);
    chip().setLinkLevel(9, true);
    EXPECT_EQ(ports(2, untagged()), allBut2);
    EXPECT_TRUE(decide(2, sized(1519)).isDropped());
    write(global1, 0x04, 0x0400);
    EXPECT_FALSE(decide(2, sized(1519)).isDropped());
    write(global2, 0x07, 0xB000);
    EXPECT_EQ(ports(2, untagged()), 0U);
    write(global2, 0x07, 0xB7FF);
    addAddress(0, stationB, 0x0087);
    EXPECT_EQ(ports(2, untagged()), 0x008U);
    write(global1, 0x0C, 0);
    write(global1, 0x0B, 0x9000);
    EXPECT_EQ(ports(2, untagged()), allBut2);
}

TEST_F(ForwardingEgressTest, AskedAboutOnePortTheRuleAndTheReasonAreThatPorts) {
    auto const towards = [this](unsigned port, Frame const& frame) {
        return chip().getForwarding()->decide(2, frame, 1U << port);
    };
    setMode(2, 3);
    addVlan(5, "22233333333");
    EXPECT_EQ(decide(2, tagged(5)).getPorts(), 0x003U);
    EXPECT_EQ(towards(0, tagged(5)).getPorts(), 0x001U);
    Decision const stranger = towards(7, tagged(5));
    EXPECT_EQ(lastRule(stranger), "M12");
    EXPECT_EQ(stranger.dropReason, "the members of the VLAN of port 2 left no port");
    setState(1, 1);
    EXPECT_EQ(lastRule(towards(1, tagged(5))), "M13");
    change(1, 0x04, 0x0004, 0);
    EXPECT_EQ(lastRule(towards(1, tagged(5))), "M11");
}

TEST_F(ForwardingEgressTest, AskedAboutOnePortFramesForTheCpuGoToNoOther) {
    constexpr Frame::Address bridges = 0x0180C2000002;
    write(global2, 0x05, 0x0008);
    write(global2, 0x03, 0xFFFF);
    write(global1, 0x1A, 0x0090);
    auto const& forwarding = *chip().getForwarding();
    EXPECT_EQ(forwarding.decide(2, untagged(bridges), 0x200).getPorts(), 0x200U);
    Decision const other = forwarding.decide(2, untagged(bridges), 0x002);
    EXPECT_EQ(lastRule(other), "M6");
    EXPECT_EQ(other.dropReason, "frames for the CPU go to port 9 only");
}

TEST_F(ForwardingEgressTest, AFreshChipAndOneThatWasAskedAgree) {
    setMode(2, 3);
    decide(2, tagged(5));
    addVlan(5, "22233333333");
    EXPECT_EQ(ports(2, tagged(5)), 0x003U);
    flush();
    EXPECT_EQ(ports(2, tagged(5)), 0U);
}

} // namespace
