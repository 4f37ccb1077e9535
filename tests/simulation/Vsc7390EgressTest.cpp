// Where a VSC7390 sends a frame, and in which form: both sides of each condition.

#include <vector>

#include "tests/simulation/Vsc7390ForwardingFixture.hpp"

using simulation_test::Vsc7390ForwardingFixture;

namespace {

class Vsc7390EgressTest : public Vsc7390ForwardingFixture {};

TEST_F(Vsc7390EgressTest, V9FloodMasks) {
    writeAnalyser(0x0E, 0x1);
    writeAnalyser(0x0F, 0x2);
    writeAnalyser(0x04, 0x4);
    EXPECT_EQ(portsOf(untagged()), 0x1U);
    EXPECT_EQ(portsOf(untagged(group)), 0x2U);
    EXPECT_EQ(portsOf(untagged(broadcast)), 0x2U);
    EXPECT_EQ(portsOf(untagged(0x01005E000000)), 0x4U);
    EXPECT_EQ(portsOf(untagged(0x01005E7FFFFF)), 0x4U);
    EXPECT_EQ(portsOf(untagged(0x01005E800000)), 0x2U);
    writeAnalyser(0x0E, 0);
    EXPECT_EQ(end(untagged()), "V9");
    Options options;
    options.broadcastFlood = Options::BroadcastFlood::unicastMask;
    start(options);
    writeAnalyser(0x0E, 0x1);
    EXPECT_EQ(portsOf(untagged(broadcast)), 0x1U);
}

TEST_F(Vsc7390EgressTest, V9EntriesOfTheMacTable) {
    struct Case {
        unsigned flags;
        std::uint32_t ports;
        bool toProcessor;
    };
    writeAnalyser(0x43 + 2, 0x05);
    for (Case const& item : {Case{0x400, 0x05, false}, Case{0x2400, 0, false}, Case{0x4400, 0x05, true},
                             Case{0x6400, 0, true}}) {
        commandMac(item.flags | 5 << 3 | 1, 0x00010200, 0x00000002);
        Decision const decision = decide(untagged());
        EXPECT_EQ(decision.getPorts(), item.ports) << item.flags;
        EXPECT_EQ(decision.toProcessor, item.toProcessor) << item.flags;
        EXPECT_EQ(decision.dropReason.empty(), item.ports != 0 || item.toProcessor) << item.flags;
    }
}

TEST_F(Vsc7390EgressTest, V9Groups) {
    writeMac(0x00CA, 0x00010000, 0x13010102, 0x1E07);
    EXPECT_EQ(portsOf(untagged(ipGroup)), 0x13U);
    EXPECT_EQ(portsOf(tagged(untagged(ipGroup), 65)), 0x37U) << "the same row, another VLAN";
    EXPECT_EQ(portsOf(untagged(ipGroup + 1)), 0x37U) << "another group";
    writeMac(0x00CA, 0x00010000, 0x00010102, 0x1E07);
    EXPECT_EQ(end(untagged(ipGroup)), "V9");
    writeMac(0x00CA, 0x00010000, 0x13010102, 0x1607 | 0x200);
    EXPECT_EQ(portsOf(untagged(ipGroup)), 0x37U) << "not aged, and so none";
}

TEST_F(Vsc7390EgressTest, AskedAboutOnePortTheRuleAndTheReasonAreThatPorts) {
    auto const towards = [this](unsigned port) {
        return chip().getForwarding()->decide(3, untagged(), 1U << port);
    };
    writeAnalyser(0x80 + 3, 0x1);
    EXPECT_EQ(towards(0).getPorts(), 0x1U);
    EXPECT_EQ(towards(1).rules.back(), "V10");
    EXPECT_EQ(towards(1).dropReason, "the source mask leaves no port");
    writeAnalyser(0x0E, 0x1);
    EXPECT_EQ(towards(1).rules.back(), "V9");
    EXPECT_EQ(towards(1).dropReason, "the mask for unknown addresses leads to no port");
    // The copy for the processor is no way to a port.
    commandMac(0x4400 | 5 << 3 | 1, 0x00010200, 0x00000002);
    EXPECT_TRUE(decide(untagged()).toProcessor);
    EXPECT_FALSE(towards(24).isDropped());
    EXPECT_EQ(towards(1).dropReason, "its entry of the MAC table leads to no port");
}

TEST_F(Vsc7390EgressTest, V10Masks) {
    Frame const frame = tagged(untagged(ipGroup), 5);
    ASSERT_EQ(chip().getRow(ipGroup, 5), 0x08AU);
    writeVlan(5, 0x0000000C);
    EXPECT_EQ(portsOf(frame), 0x03U);
    writeMac(0x008A, 0x00050000, 0x37010102, 0x0E07);
    EXPECT_EQ(portsOf(frame), 0x03U);
    writeMac(0x008A, 0x00050000, 0x37010102, 0x1E07);
    EXPECT_EQ(portsOf(frame), 0x37U) << "the entry ignores VLANs";
    writeAnalyser(0x83, 0x31);
    EXPECT_EQ(portsOf(frame), 0x31U);
    for (unsigned code = 0; code < 16; ++code) {
        writeAnalyser(0x30 + code, 0x22);
    }
    EXPECT_EQ(portsOf(frame), 0x20U);
    writeAnalyser(0x83, 0x01);
    EXPECT_EQ(end(frame), "V10");
    Options options;
    options.ignoreVlan = Options::IgnoreVlan::skipsSourceMaskToo;
    start(options);
    writeMac(0x008A, 0x00050000, 0x37010102, 0x1E07);
    writeAnalyser(0x83, 0x01);
    EXPECT_EQ(portsOf(frame), 0x37U);
    EXPECT_EQ(portsOf(tagged(5)), 0x01U);
}

TEST_F(Vsc7390EgressTest, V10OnlyTheSourceMaskKeepsAFrameFromItsPort) {
    writeAnalyser(0x83, 0x01FFFFFF);
    EXPECT_EQ(portsOf(untagged()), 0x3FU);
}

TEST_F(Vsc7390EgressTest, V10AFlowHasOneMemberOfATrunk) {
    for (unsigned code = 0; code < 16; ++code) {
        writeAnalyser(0x30 + code, 0x01FFFFC0U | 1U << code % 3);
    }
    writeAnalyser(0x20, 4);
    unsigned seen = 0;
    for (std::uint64_t sender = 0x020000000010; sender < 0x020000000020; ++sender) {
        std::uint32_t const ports = portsOf(untagged(stationB, sender));
        EXPECT_TRUE(ports == 1 || ports == 2 || ports == 4) << ports;
        seen |= ports;
    }
    EXPECT_EQ(seen, 7U);
    Options options;
    options.aggregationCode = Options::AggregationCode::zero;
    start(options);
    writeAnalyser(0x30, 0x4);
    EXPECT_EQ(portsOf(untagged()), 0x4U);
}

// Which member gets a flow is nobody's business, but any nibble of the addresses can make another flow of it.
TEST_F(Vsc7390EgressTest, V10EveryNibbleTellsFlowsApart) {
    for (unsigned bit = 0; bit < 4; ++bit) {
        for (unsigned code = 0; code < 16; ++code) {
            writeAnalyser(0x30 + code, 1U << (code >> bit & 1));
        }
        std::uint32_t const usual = portsOf(untagged());
        for (unsigned nibble = 0; nibble < 12; ++nibble) {
            std::uint64_t const flip = std::uint64_t{1} << (4 * nibble + bit);
            EXPECT_EQ(portsOf(untagged(stationB ^ flip)), 3 - usual) << bit << ' ' << nibble;
            EXPECT_EQ(portsOf(untagged(stationB, stationA ^ flip)), 3 - usual) << bit << ' ' << nibble;
        }
    }
}

TEST_F(Vsc7390EgressTest, V10MirrorsAreRefused) {
    for (unsigned bit : {0x04000000U, 0x08000000U}) {
        writeAnalyser(0x83, 0x01FFFFF7 | bit);
        Decision const decision = receive(untagged());
        EXPECT_EQ(decision.notModelled, "frames of port 3 are copied");
        EXPECT_TRUE(decision.isDropped());
        EXPECT_FALSE(decision.toProcessor);
        EXPECT_EQ(portsOf(untagged(), 4), 0x2FU);
    }
    writeAnalyser(0x83, 0x01FFFFF7 | 0xF2000000);
    EXPECT_EQ(portsOf(untagged()), 0x37U) << "bits without a meaning";
    writeVlan(5, 0x27FFFFFC);
    EXPECT_EQ(decide(tagged(5)).notModelled, "VLAN 5 is mirrored");
    EXPECT_TRUE(chip().getMacTable().empty());
}

TEST_F(Vsc7390EgressTest, V11TheSenderIsOn) {
    writeAnalyser(0x0E, 0x11);
    for (unsigned config : {on & ~0x10000000U, on | 0x20000000U, on | 0x10U}) {
        writePort(4, 0x00, config);
        EXPECT_EQ(portsOf(untagged()), 0x01U) << config;
    }
    for (unsigned config : {on, on | 0x20U, on & ~0x00010000U}) {
        writePort(4, 0x00, config);
        EXPECT_EQ(portsOf(untagged()), 0x11U) << config;
    }
    writeAnalyser(0x0E, 0x800000);
    EXPECT_EQ(end(untagged()), "V11");
    writeAnalyser(0x0E, 0x1000000);
    Decision const decision = decide(untagged());
    EXPECT_TRUE(decision.toProcessor);
    EXPECT_FALSE(decision.isDropped());
    EXPECT_EQ(decision.dropReason, "");
}

TEST_F(Vsc7390EgressTest, V12Forms) {
    struct Case {
        unsigned misc;
        unsigned update;
        bool isTagged;
        Form form;
        std::vector<unsigned> vids;
    };
    writePort(3, 0x7A, 7);
    Frame const plain = untagged();
    for (Case const& item :
         {Case{0x00, 0x00, true, Form::untagged, {}}, Case{0x00, 0x01, true, Form::tagged, {7}},
          Case{0x80, 0x00, true, Form::asReceived, {7}}, Case{0x80, 0x01, true, Form::tagAdded, {7, 7}},
          Case{0x00, 0x01, false, Form::tagged, {7}}, Case{0x00, 0x79, true, Form::untagged, {}},
          Case{0x00, 0x89, true, Form::tagged, {7}}, Case{0x00, 0x71, true, Form::tagged, {7}},
          Case{0x00, 0x78, true, Form::untagged, {}}}) {
        writePort(3, 0x79, item.misc);
        writePort(4, 0x24, item.update);
        Decision const decision = decide(item.isTagged ? tagged(plain, 7) : plain);
        ASSERT_NE(decision.find(4), nullptr);
        EXPECT_EQ(decision.find(4)->form, item.form) << item.misc << ' ' << item.update;
        Frame expected = plain;
        for (unsigned vid : item.vids) {
            expected = tagged(expected, vid);
        }
        EXPECT_EQ(decision.find(4)->frame, expected) << item.misc << ' ' << item.update;
    }
}

TEST_F(Vsc7390EgressTest, V12Priorities) {
    writePort(3, 0x7A, 0x8000 | 6 << 12 | 7);
    writePort(4, 0x24, 0x01);
    Frame const plain = untagged();
    auto const sent = [this](Frame const& frame) { return *decide(frame).find(4)->frame.getTag(); };
    EXPECT_EQ(sent(plain), (Frame::Tag{7, 6, true}));
    EXPECT_EQ(sent(tagged(plain, 9, 3)), (Frame::Tag{9, 3, false}));
    EXPECT_EQ(sent(tagged(plain, 0, 3)), (Frame::Tag{7, 3, false}));
    writePort(3, 0x79, 0x100);
    EXPECT_EQ(sent(tagged(plain, 9, 3)), (Frame::Tag{7, 6, true})) << "the tag is ignored";
}

TEST_F(Vsc7390EgressTest, V12ChangedPrioritiesAreRefused) {
    for (unsigned update : {0x00020000U, 0x00040000U}) {
        writePort(4, 0x24, update);
        EXPECT_EQ(decide(untagged()).notModelled, "port 4 rewrites priorities");
        writeAnalyser(0x0E, 0x07);
        EXPECT_EQ(portsOf(untagged()), 0x07U) << "it does not go there";
        writeAnalyser(0x0E, 0x37);
    }
    EXPECT_TRUE(decide(untagged()).isRefused());
}

} // namespace
