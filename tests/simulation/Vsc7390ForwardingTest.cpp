// The rules by which a VSC7390 forwards, each with both sides of its conditions, from registers that are
// written over the bus.

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation::Decision;
using simulation::EthernetFrame;
using simulation_test::Vsc7390Fixture;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Form = Decision::Form;

constexpr std::uint64_t station = 0x020000000001;
constexpr std::uint64_t other = 0x020000000002;
constexpr std::uint64_t multicast = 0x030000000009;
/// 239.129.1.2; in VLAN 1 its row is 0x0CA.
constexpr std::uint64_t group = 0x01005E010102;
constexpr std::uint64_t broadcast = 0xFFFFFFFFFFFF;

/// Sender and receiver on, full duplex, 1000 Mbit/s.
constexpr unsigned on = 0x10050001;

/// The payload that makes an untagged frame 100 bytes long on the wire.
constexpr std::size_t payloadOf100 = 100 - 18;

EthernetFrame frameTo(std::uint64_t destination, std::size_t payload = payloadOf100) {
    return EthernetFrame::make(destination, station, 0x0800, EthernetFrame::Bytes(payload, 0x55));
}

EthernetFrame tagged(EthernetFrame const& frame, unsigned vid, unsigned priority = 0) {
    return frame.withTagPushed({vid, priority, false});
}

/// Ports 0 to 5 are on; 3 gets the frames. All masks are as after a reset.
class Vsc7390ForwardingTest : public Vsc7390Fixture {
protected:
    Vsc7390ForwardingTest() { start(); }

    void start(Options const& options = {}) {
        rebuild(options);
        for (unsigned port = 0; port < 6; ++port) {
            writePort(port, 0x00, on);
        }
    }

    Decision decide(EthernetFrame const& frame, unsigned port = 3) {
        return chip().getForwarding()->decide(port, frame);
    }
    Decision receive(EthernetFrame const& frame, unsigned port = 3) {
        return chip().getForwarding()->receive(port, frame);
    }
    std::uint32_t portsOf(EthernetFrame const& frame, unsigned port = 3) {
        return decide(frame, port).getPorts();
    }
    /// The rule that ended a frame's way to no port.
    std::string end(EthernetFrame const& frame, unsigned port = 3) {
        Decision const decision = decide(frame, port);
        EXPECT_EQ(decision.getPorts(), 0U);
        EXPECT_FALSE(decision.dropReason.empty());
        return std::string(decision.rules.back());
    }

    std::vector<std::uint32_t> counters(unsigned port) {
        std::vector<std::uint32_t> values;
        for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
            values.push_back(readPort(port, counter));
        }
        return values;
    }
};

TEST_F(Vsc7390ForwardingTest, AFrameMeetsAllRulesInTheirOrder) {
    Decision const decision = receive(frameTo(broadcast));
    EXPECT_EQ(decision.describe(),
              "VLAN 1: to 0 untagged, 1 untagged, 2 untagged, 4 untagged, 5 untagged, the processor; learnt "
              "(V1 V2 V3 V4 V5 V6 V7 V8 V9 V10 V11 V12)");
    EXPECT_EQ(chip().getForwarding()->getNumberOfPorts(), 24U);
}

TEST_F(Vsc7390ForwardingTest, V1TheReceiverIsOn) {
    for (unsigned config : {on & ~0x00010000U, on | 0x20000000U, on | 0x20U}) {
        writePort(3, 0x00, config);
        EXPECT_EQ(end(frameTo(broadcast)), "V1") << config;
    }
    for (unsigned config : {on, on | 0x10U, on & ~0x10000000U}) {
        writePort(3, 0x00, config);
        EXPECT_EQ(portsOf(frameTo(broadcast)), 0x37U) << config;
    }
}

TEST_F(Vsc7390ForwardingTest, V1APulledLinkEndsThePath) {
    chip().unplugLink(3);
    EXPECT_EQ(end(frameTo(broadcast)), "V1");
    EXPECT_FALSE(chip().getForwarding()->hasLink(3));
    chip().plugLink(3);
    chip().unplugLink(4);
    EXPECT_EQ(portsOf(frameTo(broadcast)), 0x27U);
    Options options;
    options.untoldLink = Options::UntoldLink::down;
    start(options);
    EXPECT_EQ(end(frameTo(broadcast)), "V1");
    chip().plugLink(3);
    chip().plugLink(5);
    EXPECT_EQ(portsOf(frameTo(broadcast)), 0x20U);
}

TEST_F(Vsc7390ForwardingTest, V2LengthAndFcs) {
    struct Case {
        unsigned config;
        unsigned tags;
        std::size_t length;
        bool passes;
    };
    for (Case const& item :
         {Case{on, 0, 63, false}, Case{on, 0, 64, true}, Case{on, 0, 1518, true}, Case{on, 0, 1519, false},
          Case{on, 1, 1518, true}, Case{on, 1, 1519, false}, Case{on | 0x4000, 0, 1519, false},
          Case{on | 0x4000, 1, 1522, true}, Case{on | 0x4000, 1, 1523, false},
          Case{on | 0x4000, 2, 1523, false}, Case{on | 0xC000, 2, 1526, true},
          Case{on | 0xC000, 2, 1527, false}, Case{on | 0xC000, 1, 1523, false}}) {
        writePort(3, 0x00, item.config);
        EthernetFrame frame(EthernetFrame::Bytes(item.length - 4 - 4 * item.tags, 0x02));
        for (unsigned tag = 0; tag < item.tags; ++tag) {
            frame = tagged(frame, 1);
        }
        ASSERT_EQ(frame.getWireLength(), item.length);
        EXPECT_EQ(decide(frame).rules.back(), item.passes ? "V12" : "V2")
            << item.config << ' ' << item.tags << ' ' << item.length;
    }
    EXPECT_EQ(end(EthernetFrame(frameTo(other).getBytes(), EthernetFrame::Fcs::bad)), "V2");
    writePort(3, 0x10, 99);
    EXPECT_EQ(end(frameTo(other)), "V2");
    writePort(3, 0x10, 100);
    EXPECT_EQ(portsOf(frameTo(other)), 0x37U);
}

TEST_F(Vsc7390ForwardingTest, V3ControlAndBridgeFrames) {
    EthernetFrame const pause = EthernetFrame::make(0x0180C2000001, station, 0x8808);
    EthernetFrame const control = EthernetFrame::make(other, station, 0x8808);
    EXPECT_EQ(end(pause), "V3");
    EXPECT_EQ(end(control), "V3");
    writePort(3, 0x6E, 0x10);
    EXPECT_EQ(end(pause), "V3");
    EXPECT_EQ(portsOf(control), 0x37U);
    writePort(3, 0x6E, 0x08);
    EXPECT_EQ(portsOf(pause), 0x37U);
    EXPECT_EQ(end(control), "V3");
    EXPECT_EQ(end(frameTo(0x0180C2000000)), "V3");
    EXPECT_EQ(end(frameTo(0x0180C200000F)), "V3");
    EXPECT_EQ(portsOf(frameTo(0x0180C2000010)), 0x37U);
    EXPECT_EQ(portsOf(frameTo(0x0180C1FFFFFF)), 0x37U);
    EXPECT_EQ(portsOf(frameTo(0x0180C2000020)), 0x37U) << "registration of groups";
    Options options;
    options.bridgeFrames = Options::BridgeFrames::likeOthers;
    start(options);
    EXPECT_EQ(portsOf(frameTo(0x0180C2000000)), 0x37U);
    EXPECT_EQ(end(pause), "V3");
}

TEST_F(Vsc7390ForwardingTest, V4ClassifierDrops) {
    EthernetFrame const fromGroup = EthernetFrame::make(other, multicast, 0x0800);
    EthernetFrame const fromNull = EthernetFrame::make(other, 0, 0x0800);
    EthernetFrame const toNull = EthernetFrame::make(0, station, 0x0800);
    EthernetFrame const plain = frameTo(other);
    struct Case {
        unsigned drop;
        EthernetFrame const& frame;
    };
    for (Case const& item : {Case{0x01, fromNull}, Case{0x01, toNull}, Case{0x02, tagged(plain, 1)},
                             Case{0x04, plain}, Case{0x04, tagged(plain, 0)}, Case{0x40, fromGroup}}) {
        writePort(3, 0x6E, item.drop);
        EXPECT_EQ(end(item.frame), "V4") << item.drop;
        writePort(3, 0x6E, 0x47 & ~item.drop);
        if (item.drop != 0x01 && item.drop != 0x40) {
            EXPECT_EQ(portsOf(item.frame), 0x37U) << item.drop;
        }
        writePort(3, 0x6E, 0);
        EXPECT_EQ(portsOf(item.frame), 0x37U) << item.drop;
    }
}

TEST_F(Vsc7390ForwardingTest, V5Classification) {
    struct Case {
        unsigned misc;
        int vid;
        unsigned expectedVid;
        Form form;
    };
    writePort(3, 0x7A, 7);
    for (Case const& item : {Case{0x000, -1, 7, Form::untagged}, Case{0x000, 0, 7, Form::untagged},
                             Case{0x000, 9, 9, Form::untagged}, Case{0x080, 9, 9, Form::asReceived},
                             Case{0x100, -1, 7, Form::untagged}, Case{0x100, 9, 7, Form::untagged},
                             Case{0x180, 9, 7, Form::asReceived}}) {
        writePort(3, 0x79, item.misc);
        EthernetFrame const plain = frameTo(other);
        EthernetFrame const frame = item.vid < 0 ? plain : tagged(plain, static_cast<unsigned>(item.vid));
        Decision const decision = decide(frame);
        EXPECT_EQ(decision.vid, item.expectedVid) << item.misc << ' ' << item.vid;
        ASSERT_NE(decision.find(0), nullptr);
        EXPECT_EQ(decision.find(0)->form, item.form) << item.misc << ' ' << item.vid;
        EXPECT_EQ(decision.find(0)->frame, item.form == Form::asReceived ? frame : plain);
    }
    Options options;
    options.ignoredTag = Options::IgnoredTag::stays;
    start(options);
    writePort(3, 0x79, 0x100);
    EXPECT_EQ(decide(tagged(frameTo(other), 9)).find(0)->frame, tagged(frameTo(other), 9));
    EXPECT_EQ(decide(tagged(frameTo(other), 9), 4).find(0)->frame, frameTo(other)) << "not ignored";
}

TEST_F(Vsc7390ForwardingTest, V6ReceiveMask) {
    writeAnalyser(0x10, 0x01FFFFF7);
    Decision const decision = receive(frameTo(other));
    EXPECT_EQ(decision.rules.back(), "V6");
    EXPECT_FALSE(decision.learnt);
    EXPECT_TRUE(chip().getMacTable().empty());
    EXPECT_EQ(portsOf(frameTo(other), 4), 0x2FU);
    Options options;
    options.closedPort = Options::ClosedPort::learns;
    start(options);
    writeAnalyser(0x10, 0x01FFFFF7);
    EXPECT_EQ(receive(frameTo(other)).getPorts(), 0U);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
}

TEST_F(Vsc7390ForwardingTest, V7IngressCheck) {
    struct Case {
        unsigned vlan;
        unsigned mask;
        std::uint32_t expected;
    };
    for (Case const& item : {Case{0x1000000C, 0, 0}, Case{0x1000002C, 0, 0x3}, Case{0x0000000C, 0x8, 0},
                             Case{0x0000002C, 0x8, 0x3}, Case{0x0000000C, 0x17, 0x3}}) {
        writeVlan(5, item.vlan);
        writeAnalyser(0x05, item.mask);
        Decision const decision = decide(tagged(frameTo(other), 5));
        EXPECT_EQ(decision.getPorts(), item.expected) << item.vlan << ' ' << item.mask;
        if (item.expected == 0) {
            EXPECT_EQ(decision.dropReason, "port 3 is not a member of VLAN 5");
            EXPECT_EQ(decision.rules.back(), "V8");
        }
    }
}

TEST_F(Vsc7390ForwardingTest, V8Learning) {
    struct Case {
        std::function<void()> setUp;
        EthernetFrame frame;
        bool learns;
    };
    EthernetFrame const frame = tagged(frameTo(other), 5);
    std::vector<Case> const cases = {
        {[] {}, frame, true},
        {[this] { writeAnalyser(0x0D, 0x01FFFFF7); }, frame, false},
        {[this] { writeAnalyser(0x0D, 0x8); }, frame, true},
        {[this] { writeVlan(5, 0x47FFFFFC); }, frame, false},
        {[this] { writeVlan(6, 0x47FFFFFC); }, frame, true},
        {[] {}, tagged(EthernetFrame::make(other, multicast, 0x0800), 5), false},
        {[this] { writeVlan(5, 0x1000000C); }, frame, true},
        {[this] {
             writeVlan(5, 0x1000000C);
             writeAnalyser(0x03, 0x02000000);
         },
         frame, false},
        {[this] { writeAnalyser(0x03, 0x02000000); }, frame, true},
    };
    for (std::size_t number = 0; number < cases.size(); ++number) {
        start();
        cases[number].setUp();
        EXPECT_EQ(decide(cases[number].frame).learnt, cases[number].learns) << number;
        EXPECT_TRUE(chip().getMacTable().empty()) << "deciding changes nothing";
        EXPECT_EQ(receive(cases[number].frame).learnt, cases[number].learns) << number;
        EXPECT_EQ(chip().getMacTable().size(), cases[number].learns ? 1U : 0U) << number;
    }
    Options options;
    options.intruderLearning = Options::IntruderLearning::never;
    start(options);
    writeVlan(5, 0x1000000C);
    EXPECT_FALSE(receive(frame).learnt);
}

TEST_F(Vsc7390ForwardingTest, V8WhatIsLearntLeadsBackAndMoves) {
    receive(frameTo(other));
    EXPECT_EQ(portsOf(EthernetFrame::make(station, other, 0x0800), 0), 0x08U);
    EXPECT_EQ(portsOf(tagged(EthernetFrame::make(station, other, 0x0800), 5), 0), 0x3EU) << "another VLAN";
    receive(frameTo(other), 4);
    EXPECT_EQ(portsOf(EthernetFrame::make(station, other, 0x0800), 0), 0x10U);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
    commandMac(3);
    EXPECT_TRUE(chip().getMacTable().begin()->second.aged);
    receive(frameTo(other), 4);
    EXPECT_FALSE(chip().getMacTable().begin()->second.aged) << "seen again";
}

TEST_F(Vsc7390ForwardingTest, V8ALockedEntryStays) {
    commandMac(0x600 | 5 << 3 | 1, 0x00010200, 0x00000001);
    Decision const decision = receive(frameTo(other));
    EXPECT_FALSE(decision.learnt);
    EXPECT_EQ(decision.getPorts(), 0x37U);
    EXPECT_EQ(chip().getMacTable().begin()->second.destination, 5U);
}

TEST_F(Vsc7390ForwardingTest, V9FloodMasks) {
    writeAnalyser(0x0E, 0x1);
    writeAnalyser(0x0F, 0x2);
    writeAnalyser(0x04, 0x4);
    EXPECT_EQ(portsOf(frameTo(other)), 0x1U);
    EXPECT_EQ(portsOf(frameTo(multicast)), 0x2U);
    EXPECT_EQ(portsOf(frameTo(broadcast)), 0x2U);
    EXPECT_EQ(portsOf(frameTo(0x01005E000000)), 0x4U);
    EXPECT_EQ(portsOf(frameTo(0x01005E7FFFFF)), 0x4U);
    EXPECT_EQ(portsOf(frameTo(0x01005E800000)), 0x2U);
    writeAnalyser(0x0E, 0);
    EXPECT_EQ(end(frameTo(other)), "V9");
    Options options;
    options.broadcastFlood = Options::BroadcastFlood::unicastMask;
    start(options);
    writeAnalyser(0x0E, 0x1);
    EXPECT_EQ(portsOf(frameTo(broadcast)), 0x1U);
}

TEST_F(Vsc7390ForwardingTest, V9EntriesOfTheMacTable) {
    struct Case {
        unsigned flags;
        std::uint32_t ports;
        bool toProcessor;
    };
    writeAnalyser(0x43 + 2, 0x05);
    for (Case const& item : {Case{0x400, 0x05, false}, Case{0x2400, 0, false}, Case{0x4400, 0x05, true},
                             Case{0x6400, 0, true}}) {
        commandMac(item.flags | 5 << 3 | 1, 0x00010200, 0x00000002);
        Decision const decision = decide(frameTo(other));
        EXPECT_EQ(decision.getPorts(), item.ports) << item.flags;
        EXPECT_EQ(decision.toProcessor, item.toProcessor) << item.flags;
        EXPECT_EQ(decision.dropReason.empty(), item.ports != 0 || item.toProcessor) << item.flags;
    }
}

TEST_F(Vsc7390ForwardingTest, V9Groups) {
    writeMac(0x00CA, 0x00010000, 0x13010102, 0x1E07);
    EXPECT_EQ(portsOf(frameTo(group)), 0x13U);
    EXPECT_EQ(portsOf(tagged(frameTo(group), 65)), 0x37U) << "the same row, another VLAN";
    EXPECT_EQ(portsOf(frameTo(group + 1)), 0x37U) << "another group";
    writeMac(0x00CA, 0x00010000, 0x00010102, 0x1E07);
    EXPECT_EQ(end(frameTo(group)), "V9");
    writeMac(0x00CA, 0x00010000, 0x13010102, 0x1607 | 0x200);
    EXPECT_EQ(portsOf(frameTo(group)), 0x37U) << "not aged, and so none";
}

TEST_F(Vsc7390ForwardingTest, V10Masks) {
    EthernetFrame const frame = tagged(frameTo(group), 5);
    ASSERT_EQ(chip().getRow(group, 5), 0x08AU);
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
    EXPECT_EQ(portsOf(tagged(frameTo(other), 5)), 0x01U);
}

TEST_F(Vsc7390ForwardingTest, V10OnlyTheSourceMaskKeepsAFrameFromItsPort) {
    writeAnalyser(0x83, 0x01FFFFFF);
    EXPECT_EQ(portsOf(frameTo(other)), 0x3FU);
}

TEST_F(Vsc7390ForwardingTest, V10AFlowHasOneMemberOfATrunk) {
    for (unsigned code = 0; code < 16; ++code) {
        writeAnalyser(0x30 + code, 0x01FFFFC0U | 1U << code % 3);
    }
    writeAnalyser(0x20, 4);
    unsigned seen = 0;
    for (std::uint64_t sender = 0x020000000010; sender < 0x020000000020; ++sender) {
        std::uint32_t const ports = portsOf(EthernetFrame::make(other, sender, 0x0800));
        EXPECT_TRUE(ports == 1 || ports == 2 || ports == 4) << ports;
        seen |= ports;
    }
    EXPECT_EQ(seen, 7U);
    Options options;
    options.aggregationCode = Options::AggregationCode::zero;
    start(options);
    writeAnalyser(0x30, 0x4);
    EXPECT_EQ(portsOf(frameTo(other)), 0x4U);
}

TEST_F(Vsc7390ForwardingTest, V10MirrorsAreRefused) {
    for (unsigned bit : {0x04000000U, 0x08000000U}) {
        writeAnalyser(0x83, 0x01FFFFF7 | bit);
        Decision const decision = receive(frameTo(other));
        EXPECT_EQ(decision.notModelled, "frames of port 3 are copied");
        EXPECT_TRUE(decision.isDropped());
        EXPECT_FALSE(decision.toProcessor);
        EXPECT_EQ(portsOf(frameTo(other), 4), 0x2FU);
    }
    writeAnalyser(0x83, 0x01FFFFF7 | 0xF2000000);
    EXPECT_EQ(portsOf(frameTo(other)), 0x37U) << "bits without a meaning";
    writeVlan(5, 0x27FFFFFC);
    EXPECT_EQ(decide(tagged(frameTo(other), 5)).notModelled, "VLAN 5 is mirrored");
    EXPECT_TRUE(chip().getMacTable().empty());
}

TEST_F(Vsc7390ForwardingTest, V11TheSenderIsOn) {
    writeAnalyser(0x0E, 0x11);
    for (unsigned config : {on & ~0x10000000U, on | 0x20000000U, on | 0x10U}) {
        writePort(4, 0x00, config);
        EXPECT_EQ(portsOf(frameTo(other)), 0x01U) << config;
    }
    for (unsigned config : {on, on | 0x20U, on & ~0x00010000U}) {
        writePort(4, 0x00, config);
        EXPECT_EQ(portsOf(frameTo(other)), 0x11U) << config;
    }
    writeAnalyser(0x0E, 0x800000);
    EXPECT_EQ(end(frameTo(other)), "V11");
    writeAnalyser(0x0E, 0x1000000);
    Decision const decision = decide(frameTo(other));
    EXPECT_TRUE(decision.toProcessor);
    EXPECT_FALSE(decision.isDropped());
    EXPECT_EQ(decision.dropReason, "");
}

TEST_F(Vsc7390ForwardingTest, V12Forms) {
    struct Case {
        unsigned misc;
        unsigned update;
        bool isTagged;
        Form form;
        std::vector<unsigned> vids;
    };
    writePort(3, 0x7A, 7);
    EthernetFrame const plain = frameTo(other);
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
        EthernetFrame expected = plain;
        for (unsigned vid : item.vids) {
            expected = tagged(expected, vid);
        }
        EXPECT_EQ(decision.find(4)->frame, expected) << item.misc << ' ' << item.update;
    }
}

TEST_F(Vsc7390ForwardingTest, V12Priorities) {
    writePort(3, 0x7A, 0x8000 | 6 << 12 | 7);
    writePort(4, 0x24, 0x01);
    EthernetFrame const plain = frameTo(other);
    auto const sent = [this](EthernetFrame const& frame) { return *decide(frame).find(4)->frame.getTag(); };
    EXPECT_EQ(sent(plain), (EthernetFrame::Tag{7, 6, true}));
    EXPECT_EQ(sent(tagged(plain, 9, 3)), (EthernetFrame::Tag{9, 3, false}));
    EXPECT_EQ(sent(tagged(plain, 0, 3)), (EthernetFrame::Tag{7, 3, false}));
    writePort(3, 0x79, 0x100);
    EXPECT_EQ(sent(tagged(plain, 9, 3)), (EthernetFrame::Tag{7, 6, true})) << "the tag is ignored";
}

TEST_F(Vsc7390ForwardingTest, V12ChangedPrioritiesAreRefused) {
    for (unsigned update : {0x00020000U, 0x00040000U}) {
        writePort(4, 0x24, update);
        EXPECT_EQ(decide(frameTo(other)).notModelled, "port 4 rewrites priorities");
        writeAnalyser(0x0E, 0x07);
        EXPECT_EQ(portsOf(frameTo(other)), 0x07U) << "it does not go there";
        writeAnalyser(0x0E, 0x37);
    }
    EXPECT_TRUE(decide(frameTo(other)).isRefused());
}

TEST_F(Vsc7390ForwardingTest, CountersOfFramesThatComeIn) {
    EthernetFrame const bad(frameTo(broadcast).getBytes(), EthernetFrame::Fcs::bad);
    struct Case {
        unsigned drop;
        EthernetFrame frame;
        std::vector<std::uint32_t> expected;
    };
    for (Case const& item : {Case{0, frameTo(other), {100, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, frameTo(broadcast), {100, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, bad, {100, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0}},
                             Case{0, frameTo(0x0180C2000000), {100, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}},
                             Case{4, frameTo(other), {100, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0}},
                             Case{4, frameTo(multicast), {100, 0, 1, 1, 0, 1, 0, 0, 0, 0, 0, 0}}}) {
        writePort(3, 0x6E, item.drop);
        decide(item.frame);
        EXPECT_EQ(counters(3), std::vector<std::uint32_t>(12, 0)) << "deciding counts nothing";
        receive(item.frame);
        EXPECT_EQ(counters(3), item.expected);
        writePort(3, 0x52, 0);
    }
    writeAnalyser(0x10, 0);
    receive(frameTo(other));
    EXPECT_EQ(chip().getCounter(3, 0x55), 1U);
    writeAnalyser(0x10, 0x8);
    writeAnalyser(0x05, 0x8);
    writeVlan(1, 0);
    receive(frameTo(other));
    EXPECT_EQ(chip().getCounter(3, 0x55), 2U);
    writePort(3, 0x00, 0);
    receive(frameTo(other));
    EXPECT_EQ(chip().getCounter(3, 0x52), 2U) << "the receiver is off";
}

TEST_F(Vsc7390ForwardingTest, CountersOfFramesThatGoOut) {
    writePort(4, 0x24, 0x01);
    receive(frameTo(other));
    EXPECT_EQ(counters(4), (std::vector<std::uint32_t>{0, 104, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(counters(0), (std::vector<std::uint32_t>{0, 100, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0}));
    receive(frameTo(broadcast));
    EXPECT_EQ(counters(4), (std::vector<std::uint32_t>{0, 208, 0, 0, 0, 0, 0, 2, 1, 0, 0, 0}));
    EXPECT_EQ(counters(6), std::vector<std::uint32_t>(12, 0));
}

TEST_F(Vsc7390ForwardingTest, CountersGoOnFromWhatATestSetAndWrap) {
    chip().setCounter(3, 0x50, 0xFFFFFFFF);
    receive(frameTo(other));
    EXPECT_EQ(chip().getCounter(3, 0x50), 99U);
    receive(frameTo(other));
    chip().poke("port 3", 0x50, 7);
    EXPECT_EQ(chip().getCounter(3, 0x50), 7U);
    receive(frameTo(other));
    chip().setCounter(3, 0x50, 7);
    EXPECT_EQ(readPort(3, 0x50), 7U);
    receive(frameTo(other));
    writePort(3, 0x52, 0);
    EXPECT_EQ(readPort(3, 0x50), 0U);
}

TEST_F(Vsc7390ForwardingTest, WhatIsWrittenCountsForTheNextFrame) {
    EXPECT_EQ(portsOf(frameTo(other)), 0x37U);
    chip().stick("analyser", 0x0E, 0, 0x30);
    EXPECT_EQ(portsOf(frameTo(other)), 0x07U);
    chip().stick("analyser", 0x0E, 0, 0);
    chip().poke("port 5", 0x00, 0);
    EXPECT_EQ(portsOf(frameTo(other)), 0x17U);
    chip().setVlanEntry(1, {0x3, false, false, false});
    EXPECT_EQ(portsOf(frameTo(other)), 0x03U);
    write(system, 0, 0x14, 1);
    EXPECT_EQ(end(frameTo(other)), "V1") << "all MACs are off";
    writePort(3, 0x00, on);
    writePort(20, 0x00, on);
    EXPECT_EQ(portsOf(frameTo(other)), 0x100000U);
}

TEST_F(Vsc7390ForwardingTest, LinkAndSpeed) {
    EXPECT_TRUE(chip().getForwarding()->hasLink(3));
    EXPECT_EQ(chip().getForwarding()->getMegabits(3), 1000U);
    EXPECT_FALSE(chip().getForwarding()->hasLink(6));
    EXPECT_EQ(chip().getForwarding()->getMegabits(6), 0U);
    writePort(6, 0x00, 0x10000002);
    EXPECT_TRUE(chip().getForwarding()->hasLink(6)) << "it sends";
    EXPECT_EQ(chip().getForwarding()->getMegabits(6), 100U);
    EXPECT_THROW(decide(frameTo(other), 24), std::out_of_range);
}

} // namespace
