// What keeps a frame out of a VSC7390, its VLAN, and what is learnt: both sides of each condition.

#include <functional>
#include <vector>

#include "tests/simulation/Vsc7390ForwardingFixture.hpp"

using simulation_test::Vsc7390ForwardingFixture;

namespace {

class Vsc7390IngressTest : public Vsc7390ForwardingFixture {};

TEST_F(Vsc7390IngressTest, V1TheReceiverIsOn) {
    for (unsigned config : {on & ~0x00010000U, on | 0x20000000U, on | 0x20U}) {
        writePort(3, 0x00, config);
        EXPECT_EQ(end(untagged(broadcast)), "V1") << config;
    }
    for (unsigned config : {on, on | 0x10U, on & ~0x10000000U}) {
        writePort(3, 0x00, config);
        EXPECT_EQ(portsOf(untagged(broadcast)), 0x37U) << config;
    }
}

TEST_F(Vsc7390IngressTest, V1APulledLinkEndsThePath) {
    chip().unplugLink(3);
    EXPECT_EQ(end(untagged(broadcast)), "V1");
    EXPECT_FALSE(chip().getForwarding()->hasLink(3));
    chip().plugLink(3);
    chip().unplugLink(4);
    EXPECT_EQ(portsOf(untagged(broadcast)), 0x27U);
    Options options;
    options.untoldLink = Options::UntoldLink::down;
    start(options);
    EXPECT_EQ(end(untagged(broadcast)), "V1");
    chip().plugLink(3);
    chip().plugLink(5);
    EXPECT_EQ(portsOf(untagged(broadcast)), 0x20U);
}

TEST_F(Vsc7390IngressTest, V2LengthAndFcs) {
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
        Frame frame(Frame::Bytes(item.length - 4 - 4 * item.tags, 0x02));
        for (unsigned tag = 0; tag < item.tags; ++tag) {
            frame = tagged(frame, 1);
        }
        ASSERT_EQ(frame.getWireLength(), item.length);
        EXPECT_EQ(decide(frame).rules.back(), item.passes ? "V12" : "V2")
            << item.config << ' ' << item.tags << ' ' << item.length;
    }
    EXPECT_EQ(end(Frame(untagged().getBytes(), Frame::Fcs::bad)), "V2");
    writePort(3, 0x10, 63);
    EXPECT_EQ(end(untagged()), "V2");
    writePort(3, 0x10, 64);
    EXPECT_EQ(portsOf(untagged()), 0x37U);
}

TEST_F(Vsc7390IngressTest, V3ControlAndBridgeFrames) {
    Frame const pause = Frame::make(0x0180C2000001, stationA, 0x8808);
    Frame const control = Frame::make(stationB, stationA, 0x8808);
    EXPECT_EQ(end(pause), "V3");
    EXPECT_EQ(end(control), "V3");
    writePort(3, 0x6E, 0x10);
    EXPECT_EQ(end(pause), "V3");
    EXPECT_EQ(portsOf(control), 0x37U);
    writePort(3, 0x6E, 0x08);
    EXPECT_EQ(portsOf(pause), 0x37U);
    EXPECT_EQ(end(control), "V3");
    EXPECT_EQ(end(untagged(0x0180C2000000)), "V3");
    EXPECT_EQ(end(untagged(0x0180C200000F)), "V3");
    EXPECT_EQ(portsOf(untagged(0x0180C2000010)), 0x37U);
    EXPECT_EQ(portsOf(untagged(0x0180C1FFFFFF)), 0x37U);
    EXPECT_EQ(portsOf(untagged(0x0180C2000020)), 0x37U) << "registration of groups";
    Options options;
    options.bridgeFrames = Options::BridgeFrames::likeOthers;
    start(options);
    EXPECT_EQ(portsOf(untagged(0x0180C2000000)), 0x37U);
    EXPECT_EQ(end(pause), "V3");
}

TEST_F(Vsc7390IngressTest, V4ClassifierDrops) {
    Frame const fromGroup = untagged(stationB, group);
    Frame const fromNull = untagged(stationB, 0);
    Frame const toNull = untagged(0, stationA);
    Frame const plain = untagged();
    struct Case {
        unsigned drop;
        Frame const& frame;
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

TEST_F(Vsc7390IngressTest, V5Classification) {
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
        Frame const plain = untagged();
        Frame const frame = item.vid < 0 ? plain : tagged(plain, static_cast<unsigned>(item.vid));
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
    EXPECT_EQ(decide(tagged(9)).find(0)->frame, tagged(9));
    EXPECT_EQ(decide(tagged(9), 4).find(0)->frame, untagged()) << "not ignored";
}

TEST_F(Vsc7390IngressTest, V6ReceiveMask) {
    writeAnalyser(0x10, 0x01FFFFF7);
    Decision const decision = receive(untagged());
    EXPECT_EQ(decision.rules.back(), "V6");
    EXPECT_FALSE(decision.learnt);
    EXPECT_TRUE(chip().getMacTable().empty());
    EXPECT_EQ(portsOf(untagged(), 4), 0x2FU);
    Options options;
    options.closedPort = Options::ClosedPort::learns;
    start(options);
    writeAnalyser(0x10, 0x01FFFFF7);
    EXPECT_EQ(receive(untagged()).getPorts(), 0U);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
}

TEST_F(Vsc7390IngressTest, V7IngressCheck) {
    struct Case {
        unsigned vlan;
        unsigned mask;
        std::uint32_t expected;
    };
    for (Case const& item : {Case{0x1000000C, 0, 0}, Case{0x1000002C, 0, 0x3}, Case{0x0000000C, 0x8, 0},
                             Case{0x0000002C, 0x8, 0x3}, Case{0x0000000C, 0x17, 0x3}}) {
        writeVlan(5, item.vlan);
        writeAnalyser(0x05, item.mask);
        Decision const decision = decide(tagged(5));
        EXPECT_EQ(decision.getPorts(), item.expected) << item.vlan << ' ' << item.mask;
        if (item.expected == 0) {
            EXPECT_EQ(decision.dropReason, "port 3 is not a member of VLAN 5");
            EXPECT_EQ(decision.rules.back(), "V8");
        }
    }
}

TEST_F(Vsc7390IngressTest, V8Learning) {
    struct Case {
        std::function<void()> setUp;
        Frame frame;
        bool learns;
    };
    Frame const frame = tagged(5);
    std::vector<Case> const cases = {
        {[] {}, frame, true},
        {[this] { writeAnalyser(0x0D, 0x01FFFFF7); }, frame, false},
        {[this] { writeAnalyser(0x0D, 0x8); }, frame, true},
        {[this] { writeVlan(5, 0x47FFFFFC); }, frame, false},
        {[this] { writeVlan(6, 0x47FFFFFC); }, frame, true},
        {[] {}, tagged(untagged(stationB, group), 5), false},
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

TEST_F(Vsc7390IngressTest, V8WhatIsLearntLeadsBackAndMoves) {
    receive(untagged());
    EXPECT_EQ(portsOf(untagged(stationA, stationB), 0), 0x08U);
    EXPECT_EQ(portsOf(tagged(untagged(stationA, stationB), 5), 0), 0x3EU) << "another VLAN";
    receive(untagged(), 4);
    EXPECT_EQ(portsOf(untagged(stationA, stationB), 0), 0x10U);
    EXPECT_EQ(chip().getMacTable().size(), 1U);
    commandMac(3);
    EXPECT_TRUE(chip().getMacTable().begin()->second.aged);
    receive(untagged(), 4);
    EXPECT_FALSE(chip().getMacTable().begin()->second.aged) << "seen again";
}

TEST_F(Vsc7390IngressTest, V8ALockedEntryStays) {
    commandMac(0x600 | 5 << 3 | 1, 0x00010200, 0x00000001);
    Decision const decision = receive(untagged());
    EXPECT_FALSE(decision.learnt);
    EXPECT_EQ(decision.getPorts(), 0x37U);
    EXPECT_EQ(chip().getMacTable().begin()->second.destination, 5U);
}

} // namespace
