#include "benchmarks/required/BoardPlan.hpp"

#include <gtest/gtest.h>

#include "reference_host/XmlDocument.hpp"

namespace required {

namespace {

BoardPlan planOf(char const* text) {
    auto const document = reference_host::XmlDocument::fromText(text, "test");
    return BoardPlan::of(*document);
}

TEST(BoardPlanTest, TakesEachPortNumberOfAVlanOnceAndReadsItsIdAsHexadecimal) {
    BoardPlan const board = planOf(R"(<b>
        <switches>
          <switch id="1" switchModel="88e6096"><port id="4" connectedTo="smac" portStatus="forwarding"/></switch>
          <switch id="0" switchModel="88e6096" atuAgeTime="65535">
            <port id="4" connectedTo="cpu" portStatus="learning"/></switch>
        </switches>
        <vlan id="10" typeOfVlan="tagBasedVlan">
          <port switchId="0" portId="4" ingress="validateTag" egress="stripTag"/>
          <port switchId="1" portId="4" ingress="addTag" egress="stripTag"/>
        </vlan></b>)");

    ASSERT_EQ(board.probes.size(), 2U);
    EXPECT_EQ(board.probes[0].id, 1U);
    ASSERT_EQ(board.switches.size(), 2U);
    EXPECT_EQ(board.switches[0].id, 0U);
    EXPECT_FALSE(board.switches[0].ageSeconds.has_value());
    ASSERT_EQ(board.switches[0].ports[0].vlans.size(), 1U);
    EXPECT_EQ(board.switches[0].ports[0].vlans[0].vid, 0x10U);
    EXPECT_EQ(board.switches[0].ports[0].vlans[0].ingress, Ingress::validateTag);
    EXPECT_TRUE(board.switches[1].ports[0].vlans.empty());
    EXPECT_EQ(board.switches[1].ports[0].kind, PortKind::smac);
}

TEST(BoardPlanTest, GivesAVsc7390ThePortsOfTheWholeDocument) {
    BoardPlan const board = planOf(R"(<b><switches>
          <switch id="2" switchModel="vsc7390">
            <port id="1" connectedTo="hmac" portStatus="disabled"/>
            <trunk id="1"><port id="1"/></trunk></switch>
          <switch id="3" switchModel="88e6096" atuAgeTime="30">
            <port id="1" connectedTo="cpu" portStatus="forwarding"/>
            <port id="2" connectedTo="cpu" portStatus="forwarding"/></switch>
        </switches></b>)");

    SwitchPlan const& vitesse = board.switches[0];
    EXPECT_FALSE(vitesse.isMarvell);
    ASSERT_EQ(vitesse.ports.size(), 2U);
    EXPECT_EQ(vitesse.ports[0].kind, PortKind::hmac);
    EXPECT_EQ(vitesse.countedPorts, 4U);
    EXPECT_EQ(vitesse.trunks, std::vector<std::vector<unsigned>>{{1U}});
    EXPECT_EQ(board.switches[1].countedPorts, 2U);
    EXPECT_EQ(board.switches[1].ageSeconds, 30U);
}

TEST(BoardPlanTest, ReadsAGroupsVlanAsDecimal) {
    BoardPlan const board = planOf(R"(<b><switches>
          <switch id="0" switchModel="88e6096">
            <port id="0" connectedTo="cpu" portStatus="forwarding"/></switch>
        </switches>
        <vlan id="10" typeOfVlan="tagBasedVlan">
          <port switchId="0" portId="0" ingress="addTag" egress="stripTag">
            <forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup>
            <forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup></port>
        </vlan></b>)");

    ASSERT_EQ(board.switches[0].ports[0].groups.size(), 1U);
    EXPECT_EQ(board.switches[0].ports[0].groups[0].vid, 10U);
    EXPECT_EQ(board.switches[0].ports[0].groups[0].address, "239.1.2.3");
}

} // namespace

} // namespace required
