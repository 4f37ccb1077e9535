#include <gtest/gtest.h>

#include "simulation/network/Decision.hpp"

using simulation::Decision;
using simulation::EthernetFrame;
using Form = Decision::Form;

namespace {

EthernetFrame const answer = EthernetFrame::make(0x020000000002, 0x020000000001, 0x0800);

constexpr std::string_view table[] = {"M1", "M2", "M7"};

TEST(DecisionTest, SaysWhereTheCopiesGo) {
    Decision decision;
    decision.vid = 4;
    decision.egress = {{1, Form::untagged, answer}, {10, Form::tagged, answer.withTag({4, 0, false})}};
    decision.learnt = true;
    decision.rules = table;
    EXPECT_EQ(decision.describe(), "VLAN 4: to 1 untagged, 10 tagged; learnt (M1 M2 M7)");
    EXPECT_EQ(decision.getPorts(), 0x402U);
    ASSERT_NE(decision.find(10), nullptr);
    EXPECT_EQ(decision.find(10)->frame.countTags(), 1U);
    EXPECT_EQ(decision.find(2), nullptr);
    EXPECT_FALSE(decision.isDropped());
}

TEST(DecisionTest, SaysWhyAFrameIsDropped) {
    Decision decision;
    decision.dropReason = "no link";
    decision.rules = {table, 1};
    EXPECT_EQ(decision.describe(), "dropped: no link (M1)");
    EXPECT_TRUE(decision.isDropped());
    EXPECT_FALSE(decision.isRefused());
}

TEST(DecisionTest, SaysWhatIsNotModelled) {
    Decision decision;
    decision.notModelled = "port 3 is in DSA mode";
    decision.rules = {table, 2};
    EXPECT_EQ(decision.describe(), "not modelled: port 3 is in DSA mode (M1 M2)");
    EXPECT_TRUE(decision.isDropped());
    EXPECT_TRUE(decision.isRefused());
}

TEST(DecisionTest, TheProcessorIsADestination) {
    Decision decision;
    decision.egress = {{0, Form::asReceived, answer}, {1, Form::tagAdded, answer}};
    decision.toProcessor = true;
    EXPECT_EQ(decision.describe(), "to 0 as received, 1 with a tag added, the processor ()");
    decision.egress.clear();
    EXPECT_FALSE(decision.isDropped());
}

TEST(DecisionTest, ClearedItSaysNothing) {
    static constexpr std::string_view rules[] = {"M1"};
    Decision decision{5, {{0, Form::tagged, answer}}, true, true, rules, "a reason", "a mode"};
    decision.clear();
    EXPECT_FALSE(decision.vid.has_value());
    EXPECT_TRUE(decision.egress.empty());
    EXPECT_FALSE(decision.learnt || decision.toProcessor);
    EXPECT_TRUE(decision.rules.empty());
    EXPECT_EQ(decision.dropReason + decision.notModelled, "");
}

} // namespace
