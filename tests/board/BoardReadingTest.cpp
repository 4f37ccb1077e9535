#include "board/BoardReading.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board/Element.hpp"
#include "model/XmlText.hpp"
#include "tests/support/TestDocument.hpp"

using board::BoardReading;

namespace {

/// A document and what a tool reads in it.
struct Board {
    explicit Board(std::string const& text) : document("<board>" + text + "</board>") {}

    test_support::TestDocument document;
    BoardReading reading{document};
};

std::vector<unsigned int> vlanIds(BoardReading const& document) {
    std::vector<unsigned int> ids;
    for (auto const& [id, vlan] : document.getVlans()) {
        ids.push_back(id);
    }
    return ids;
}

TEST(BoardReadingTest, SwitchesAreThoseUnderSwitches) {
    Board const board("<switches><switch id='3' switchModel='88e6096'/><switch id='70000'/>"
                      "</switches><switch id='9'/>");
    ASSERT_EQ(board.reading.getWanted().size(), 2U);
    EXPECT_EQ(board.reading.getWanted()[0].id, 3U);
    EXPECT_EQ(board.reading.getWanted()[0].model, "88e6096");
    EXPECT_EQ(board.reading.getWanted()[1].id, 4464U);
    EXPECT_EQ(board.reading.getWanted()[1].model, "");
}

TEST(BoardReadingTest, VlanIdsAreHexadecimal) {
    EXPECT_EQ(vlanIds(Board("<vlan id='10' typeOfVlan='tagBasedVlan'/><vlan id='0x5' typeOfVlan=''/>"
                            "<vlan id='10' typeOfVlan='portBasedVlan'/><vlan id='z' typeOfVlan='x'/>")
                          .reading),
              (std::vector<unsigned int>{0x5, 0x10, 0xFFFFFFFF}));
}

TEST(BoardReadingTest, AVlanWithoutATypeIsNone) {
    EXPECT_TRUE(Board("<vlan id='5'/>").reading.getVlans().empty());
}

TEST(BoardReadingTest, OnlyTheRightTypeIsTagBased) {
    Board const board("<vlan id='1' typeOfVlan='tagBasedVlan'/><vlan id='2' typeOfVlan='TagBasedVlan'/>");
    EXPECT_TRUE(board.reading.getVlans().at(0x1).tagBased);
    EXPECT_FALSE(board.reading.getVlans().at(0x2).tagBased);
}

TEST(BoardReadingTest, MembersAreFoundByTheIdAsANumber) {
    std::string const member = "<port switchId='1' portId='7' ingress='addTag' egress='stripTag'/>";
    Board const board("<vlan id='64' typeOfVlan='tagBasedVlan'>" + member +
                      "</vlan><vlan id='0x20' typeOfVlan='tagBasedVlan'>" + member +
                      "</vlan><vlan id='a' typeOfVlan='tagBasedVlan'>" + member + "</vlan>");
    ASSERT_EQ(vlanIds(board.reading), (std::vector<unsigned int>{0xA, 0x20, 0x64}));
    EXPECT_TRUE(board.reading.getVlans().at(0xA).members.empty());
    EXPECT_TRUE(board.reading.getVlans().at(0x20).members.empty());
    ASSERT_EQ(board.reading.getVlans().at(0x64).members.size(), 1U);
    BoardReading::Member const& found = board.reading.getVlans().at(0x64).members[0];
    EXPECT_EQ(found.switchId, 1);
    EXPECT_EQ(found.portId, 7);
    EXPECT_EQ(board::attribute(found.element, "ingress"), "addTag");
    EXPECT_EQ(board::attribute(found.element, "egress"), "stripTag");
}

TEST(BoardReadingTest, NumbersAreTheLibrarys) {
    for (auto const* const text : {"",
                                   "5",
                                   " +5",
                                   "\t\v\f\r\n-5 ",
                                   "+-5",
                                   "--5",
                                   "- 5",
                                   "+",
                                   "0x",
                                   "-0Xg",
                                   "0x-5",
                                   "00x5",
                                   "x",
                                   "7 ports",
                                   "1e",
                                   "0x1F",
                                   "-0x1",
                                   "2147483647",
                                   "2147483648",
                                   "4294967295",
                                   "4294967296",
                                   "-2147483648",
                                   "-2147483649",
                                   "100000005",
                                   "0x100000005",
                                   "-100000005",
                                   "-ffffffff",
                                   "ffffffffffffffff",
                                   "10000000000000000",
                                   "18446744073709551615",
                                   "18446744073709551616",
                                   "-100000000000000000000000000000"}) {
        test_support::TestDocument const document("<a/>");
        xmlSetProp(document.root(), reinterpret_cast<xmlChar const*>("v"), // NOLINT: UTF-8
                   reinterpret_cast<xmlChar const*>(text));                // NOLINT: as above
        XmlText const own = XmlText::attribute(document.root(), "v");
        int decimal = 0;
        EXPECT_EQ(board::decimalPrefix(text).has_value(), own.parseDecimal(decimal)) << text;
        EXPECT_EQ(board::decimalPrefix(text).value_or(0), decimal) << text;
        unsigned int hexadecimal = 0;
        EXPECT_EQ(board::hexadecimalPrefix(text).has_value(), own.parseHexadecimal(hexadecimal)) << text;
        EXPECT_EQ(board::hexadecimalPrefix(text).value_or(0), hexadecimal) << text;
    }
}

TEST(BoardReadingTest, APortWithoutANumberIsFoundByNone) {
    Board const board("<switches><switch id='0' switchModel='88e6096'><port id='one'/><port id='1'/>"
                      "</switch></switches><vlan id='4' typeOfVlan='tagBasedVlan'>"
                      "<port switchId='0'/><port switchId='0' portId='1'/></vlan>");
    BoardReading::Switch const* const owner = board.reading.getSwitch(0);
    EXPECT_EQ(owner->ports.size(), 2U);
    EXPECT_EQ(owner->findPort(~0U), nullptr);
    EXPECT_EQ(owner->findPort(1)->id, 1U);
    std::vector<BoardReading::Member> const& members = board.reading.getVlans().at(0x4).members;
    EXPECT_EQ(members[0].outcome, BoardReading::Outcome::unknownPort);
    EXPECT_EQ(members[1].outcome, BoardReading::Outcome::added);
}

TEST(BoardReadingTest, AMemberWithoutNumbersIsNowhere) {
    Board const board("<vlan id='4' typeOfVlan='tagBasedVlan'><port portId='x'/></vlan>");
    ASSERT_EQ(board.reading.getVlans().at(0x4).members.size(), 1U);
    EXPECT_EQ(board.reading.getVlans().at(0x4).members[0].switchId, -1);
    EXPECT_EQ(board.reading.getVlans().at(0x4).members[0].portId, -1);
}

TEST(BoardReadingTest, GroupsAreToldByAddressAndVlan) {
    std::string const group = "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup>";
    Board const board("<switches><switch id='2'><port id='6'>" + group + "</port></switch></switches>" +
                      "<vlan id='10' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'>" + group +
                      "</port><port switchId='0' portId='2'>" + group + "</port></vlan>");
    ASSERT_EQ(board.reading.getGroups().size(), 2U);
    auto const& onSwitch = board.reading.getGroups()[0];
    EXPECT_EQ(onSwitch.address, "239.1.2.3");
    EXPECT_EQ(onSwitch.vlanId, 0U);
    ASSERT_EQ(onSwitch.members.size(), 1U);
    EXPECT_EQ(onSwitch.members[0].switchId, 2);
    EXPECT_EQ(onSwitch.members[0].portId, 6);
    auto const& inVlan = board.reading.getGroups()[1];
    EXPECT_EQ(inVlan.vlanId, 10U);
    ASSERT_EQ(inVlan.members.size(), 2U);
    EXPECT_EQ(inVlan.members[1].portId, 2);
}

TEST(BoardReadingTest, AGroupUnderAVlanWithoutANumberIsInVlanZero) {
    Board const board("<vlan id='x' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'>"
                      "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup></port></vlan>");
    ASSERT_EQ(board.reading.getGroups().size(), 1U);
    EXPECT_EQ(board.reading.getGroups()[0].vlanId, 0U);
}

TEST(BoardReadingTest, ADocumentOfSomethingElseHasNothing) {
    Board const board("<html/>");
    EXPECT_TRUE(board.reading.getWanted().empty());
    EXPECT_TRUE(board.reading.getVlans().empty());
    EXPECT_TRUE(board.reading.getGroups().empty());
}

} // namespace
