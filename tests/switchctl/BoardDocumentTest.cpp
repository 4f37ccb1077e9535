#include "board/BoardDocument.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TestDocument.hpp"

using board::BoardDocument;

namespace {

board::BoardDocument read(std::string const& text) {
    test_support::TestDocument document("<board>" + text + "</board>");
    return board::BoardDocument(document);
}

std::vector<unsigned int> vlanIds(board::BoardDocument const& document) {
    std::vector<unsigned int> ids;
    for (auto const& vlan : document.getVlans()) {
        ids.push_back(vlan.id);
    }
    return ids;
}

TEST(BoardDocumentTest, SwitchesAreThoseUnderSwitches) {
    board::BoardDocument const document =
        read("<switches><switch id='3' switchModel='88e6096'/><switch id='70000'/>"
             "</switches><switch id='9'/>");
    ASSERT_EQ(document.getSwitches().size(), 2U);
    EXPECT_EQ(document.getSwitches()[0].id, 3U);
    EXPECT_EQ(document.getSwitches()[0].model, "88e6096");
    EXPECT_EQ(document.getSwitches()[1].id, 4464U);
    EXPECT_EQ(document.getSwitches()[1].model, "");
}

TEST(BoardDocumentTest, VlanIdsAreHexadecimal) {
    EXPECT_EQ(vlanIds(read("<vlan id='10' typeOfVlan='tagBasedVlan'/><vlan id='0x5' typeOfVlan=''/>"
                           "<vlan id='10' typeOfVlan='portBasedVlan'/><vlan id='z' typeOfVlan='x'/>")),
              (std::vector<unsigned int>{0x5, 0x10, 0xFFFFFFFF}));
}

TEST(BoardDocumentTest, AVlanWithoutATypeIsNone) {
    EXPECT_TRUE(read("<vlan id='5'/>").getVlans().empty());
}

TEST(BoardDocumentTest, OnlyTheRightTypeIsTagBased) {
    board::BoardDocument const document =
        read("<vlan id='1' typeOfVlan='tagBasedVlan'/><vlan id='2' typeOfVlan='TagBasedVlan'/>");
    EXPECT_TRUE(document.getVlans()[0].tagBased);
    EXPECT_FALSE(document.getVlans()[1].tagBased);
}

TEST(BoardDocumentTest, MembersAreFoundByTheIdAsANumber) {
    std::string const member = "<port switchId='1' portId='7' ingress='addTag' egress='stripTag'/>";
    board::BoardDocument const document =
        read("<vlan id='64' typeOfVlan='tagBasedVlan'>" + member +
             "</vlan><vlan id='0x20' typeOfVlan='tagBasedVlan'>" + member +
             "</vlan><vlan id='a' typeOfVlan='tagBasedVlan'>" + member + "</vlan>");
    ASSERT_EQ(vlanIds(document), (std::vector<unsigned int>{0xA, 0x20, 0x64}));
    EXPECT_TRUE(document.getVlans()[0].members.empty());
    EXPECT_TRUE(document.getVlans()[1].members.empty());
    ASSERT_EQ(document.getVlans()[2].members.size(), 1U);
    board::BoardDocument::Member const& found = document.getVlans()[2].members[0];
    EXPECT_EQ(found.switchId, 1);
    EXPECT_EQ(found.portId, 7);
    EXPECT_EQ(found.ingress, "addTag");
    EXPECT_EQ(found.egress, "stripTag");
}

TEST(BoardDocumentTest, AMemberWithoutNumbersIsNowhere) {
    board::BoardDocument const document =
        read("<vlan id='4' typeOfVlan='tagBasedVlan'><port portId='x'/></vlan>");
    ASSERT_EQ(document.getVlans()[0].members.size(), 1U);
    EXPECT_EQ(document.getVlans()[0].members[0].switchId, -1);
    EXPECT_EQ(document.getVlans()[0].members[0].portId, -1);
}

TEST(BoardDocumentTest, GroupsAreToldByAddressAndVlan) {
    std::string const group = "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup>";
    board::BoardDocument const document =
        read("<switches><switch id='2'><port id='6'>" + group + "</port></switch></switches>" +
             "<vlan id='10' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'>" + group +
             "</port><port switchId='0' portId='2'>" + group + "</port></vlan>");
    ASSERT_EQ(document.getMulticastGroups().size(), 2U);
    auto const& onSwitch = document.getMulticastGroups()[0];
    EXPECT_EQ(onSwitch.address, "239.1.2.3");
    EXPECT_EQ(onSwitch.vlanId, 0U);
    ASSERT_EQ(onSwitch.members.size(), 1U);
    EXPECT_EQ(onSwitch.members[0].switchId, 2);
    EXPECT_EQ(onSwitch.members[0].portId, 6);
    auto const& inVlan = document.getMulticastGroups()[1];
    EXPECT_EQ(inVlan.vlanId, 10U);
    ASSERT_EQ(inVlan.members.size(), 2U);
    EXPECT_EQ(inVlan.members[1].portId, 2);
}

TEST(BoardDocumentTest, AGroupUnderAVlanWithoutANumberIsInVlanZero) {
    board::BoardDocument const document =
        read("<vlan id='x' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'>"
             "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup></port></vlan>");
    ASSERT_EQ(document.getMulticastGroups().size(), 1U);
    EXPECT_EQ(document.getMulticastGroups()[0].vlanId, 0U);
}

TEST(BoardDocumentTest, ADocumentOfSomethingElseHasNothing) {
    board::BoardDocument const document = read("<html/>");
    EXPECT_TRUE(document.getSwitches().empty());
    EXPECT_TRUE(document.getVlans().empty());
    EXPECT_TRUE(document.getMulticastGroups().empty());
}

} // namespace
