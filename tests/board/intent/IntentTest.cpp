// What documents ask for, with everything that follows from them written out by hand.

#include "board/intent/Intent.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/TestDocument.hpp"

using board::FrameKind;
using board::IntendedBoard;
using board::Intent;
using board::PortSet;
using Reason = board::Intent::Reason;
using Tags = board::FrameKind::Tags;

namespace {

constexpr std::uint64_t groupAddress = 0x01005E010203; // of 239.1.2.3

PortSet set(std::vector<unsigned> const& ports) {
    PortSet bits = 0;
    for (unsigned const port : ports) {
        bits |= PortSet{1} << port;
    }
    return bits;
}

/// Switch 0 with ports 0 to 6 forwarding, 7 learning, 8 listening, 9 disabled, 10 not listed, and a second
/// one of the other family with ports 0 to 3.
std::string boardOf(std::string const& vlans, std::string const& trunk = {},
                    std::string const& model = "88e6096") {
    std::string text = "<board><switches><switch id='0' switchModel='" + model + "'>";
    for (int port = 0; port < 7; ++port) {
        text += "<port id='" + std::to_string(port) + "' connectedTo='external' portStatus='forwarding'>" +
                (port == 6 ? "<forwardedMulticastGroup>239.1.2.9</forwardedMulticastGroup>" : "") + "</port>";
    }
    return text +
           "<port id='7' connectedTo='smac' portStatus='learning'/>"
           "<port id='8' connectedTo='smac' portStatus='listening'/>"
           "<port id='9' connectedTo='smac' portStatus='disabled'/>" +
           trunk +
           "</switch><switch id='1' switchModel='vsc7390'>"
           "<port id='0' portStatus='forwarding'/><port id='1' portStatus='forwarding'/>"
           "<port id='2' portStatus='forwarding'/><port id='3' "
           "portStatus='forwarding'/></switch></switches>" +
           vlans + "</board>";
}

std::string member(unsigned port, std::string const& ingress, std::string const& egress,
                   std::string const& inside = {}, unsigned switchId = 0) {
    return "<port switchId='" + std::to_string(switchId) + "' portId='" + std::to_string(port) +
           "' ingress='" + ingress + "' egress='" + egress + "'>" + inside + "</port>";
}

std::string tagVlan(std::string const& id, std::string const& members) {
    return "<vlan id='" + id + "' typeOfVlan='tagBasedVlan'>" + members + "</vlan>";
}

std::string portVlan(std::vector<unsigned> const& ports) {
    std::string text = "<vlan id='f0' typeOfVlan='portBasedVlan'>";
    for (unsigned const port : ports) {
        text += "<port switchId='0' portId='" + std::to_string(port) + "'/>";
    }
    return text + "</vlan>";
}

/// A document and its intent.
struct Asked {
    explicit Asked(std::string const& text) : document(text) {}

    Intent::Answer answer(unsigned from, Tags tags, unsigned switchId = 0) const {
        return intent.ask(switchId, from, {tags, FrameKind::Destination::broadcast, 0});
    }
    Intent::Answer group(unsigned from, Tags tags, unsigned switchId = 0) const {
        return intent.ask(switchId, from, {tags, FrameKind::Destination::group, groupAddress});
    }
    Reason reason(unsigned from, Tags tags, unsigned to) const {
        FrameKind const frame{tags, FrameKind::Destination::broadcast, 0};
        return intent.explain(0, from, frame, intent.ask(0, from, frame), to);
    }

    test_support::TestDocument document;
    IntendedBoard board{document};
    Intent intent{board};
};

Tags const untagged = Tags::none();

Tags tagged(unsigned vid) {
    return Tags::one(vid);
}

/// Ports 0 and 1 untagged, 2 and 3 tagged, 4 adds tags; 7, 8, 9 and 10 cannot carry frames.
std::string const vlanFive =
    tagVlan("5", member(0, "addTagIfUntagged", "stripTag") + member(1, "addTagIfUntagged", "stripTag") +
                     member(2, "validateTag", "validateTag") + member(3, "validateTag", "validateTag") +
                     member(4, "addTag", "stripTag") + member(7, "addTagIfUntagged", "stripTag") +
                     member(8, "addTagIfUntagged", "stripTag") + member(9, "addTagIfUntagged", "stripTag") +
                     member(10, "addTagIfUntagged", "stripTag"));

struct Row {
    char const* name;
    unsigned from;
    Tags tags;
    std::vector<unsigned> must;
};

void PrintTo(Row const& row, std::ostream* out) {
    *out << row.name;
}

class TagVlanTest : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(TagVlanTest, MembersThatForwardGetTheFrame) {
    Asked const asked(boardOf(vlanFive));
    Intent::Answer const answer = asked.answer(GetParam().from, GetParam().tags);
    EXPECT_EQ(answer.must, set(GetParam().must));
    EXPECT_EQ(answer.may, 0U);
    EXPECT_EQ(answer.untagged, answer.must & set({0, 1, 4}));
    EXPECT_EQ(answer.tagged, answer.must & set({2, 3}));
}

INSTANTIATE_TEST_SUITE_P(
    Frames, TagVlanTest,
    testing::Values(
        Row{"addTagIfUntagged_untagged", 0, untagged, {1, 2, 3, 4}},
        Row{"addTagIfUntagged_priorityTag", 0, tagged(0), {1, 2, 3, 4}},
        Row{"addTagIfUntagged_itsTag", 0, tagged(5), {1, 2, 3, 4}},
        Row{"addTagIfUntagged_otherTag", 0, tagged(6), {}}, Row{"addTagIfUntagged_one", 0, tagged(1), {}},
        Row{"validateTag_untagged", 2, untagged, {}}, Row{"validateTag_priorityTag", 2, tagged(0), {}},
        Row{"validateTag_itsTag", 2, tagged(5), {0, 1, 3, 4}}, Row{"validateTag_otherTag", 2, tagged(6), {}},
        Row{"addTag_untagged", 4, untagged, {0, 1, 2, 3}},
        Row{"addTag_priorityTag", 4, tagged(0), {0, 1, 2, 3}},
        Row{"addTag_itsTag", 4, tagged(5), {0, 1, 2, 3}}, Row{"addTag_otherTag", 4, tagged(6), {0, 1, 2, 3}},
        Row{"noMember_untagged", 5, untagged, {}}, Row{"noMember_tag", 5, tagged(5), {}},
        Row{"learning", 7, untagged, {}}, Row{"listening", 8, untagged, {}}, Row{"disabled", 9, untagged, {}},
        Row{"notListed", 10, untagged, {}}),
    [](auto const& row) { return testing::PrintToString(row.param); });

TEST(IntentTest, ReasonsWhyNot) {
    Asked const asked(boardOf(vlanFive));
    EXPECT_EQ(asked.reason(0, untagged, 1), Reason::inVlan);
    EXPECT_EQ(asked.reason(0, untagged, 0), Reason::samePort);
    EXPECT_EQ(asked.reason(0, untagged, 5), Reason::receiverNotInVlan);
    EXPECT_EQ(asked.reason(0, untagged, 7), Reason::receiverNotForwarding);
    EXPECT_EQ(asked.reason(0, untagged, 10), Reason::receiverNotListed);
    EXPECT_EQ(asked.reason(7, untagged, 0), Reason::senderNotForwarding);
    EXPECT_EQ(asked.reason(10, untagged, 0), Reason::senderNotListed);
    EXPECT_EQ(asked.reason(2, untagged, 0), Reason::frameInNoVlan);
}

TEST(IntentTest, IdsOfVlansAreHexadecimal) {
    std::string const members =
        member(0, "validateTag", "validateTag") + member(1, "validateTag", "validateTag");
    Asked const asked(boardOf(tagVlan("a", members) + tagVlan("10", members)));
    EXPECT_EQ(asked.answer(0, tagged(0xA)).must, set({1}));
    EXPECT_EQ(asked.answer(0, tagged(0x10)).must, set({1}));
    EXPECT_EQ(asked.answer(0, tagged(10)).vlan, 10U);
    EXPECT_EQ(asked.answer(0, tagged(11)).must, 0U);
}

// The same number on two switches is two ports.
TEST(IntentTest, MembersAreToldApartBySwitchAndNumber) {
    Asked const asked(boardOf(tagVlan("5", member(0, "validateTag", "validateTag") +
                                               member(1, "validateTag", "validateTag") +
                                               member(0, "validateTag", "validateTag", "", 1) +
                                               member(2, "validateTag", "stripTag", "", 1))));
    EXPECT_EQ(asked.answer(0, tagged(5)).must, set({1}));
    EXPECT_EQ(asked.answer(0, tagged(5), 1).must, set({2}));
    EXPECT_EQ(asked.answer(1, tagged(5), 1).must, 0U);
}

TEST(IntentTest, TheLowestVlanServesWhereTwoAddTags) {
    Asked const asked(
        boardOf(tagVlan("7", member(0, "addTag", "stripTag") + member(1, "validateTag", "validateTag") +
                                 member(2, "addTagIfUntagged", "stripTag")) +
                tagVlan("6", member(0, "addTag", "stripTag") + member(2, "addTagIfUntagged", "stripTag") +
                                 member(3, "validateTag", "validateTag"))));
    EXPECT_EQ(asked.answer(0, untagged).vlan, 6U);
    EXPECT_EQ(asked.answer(0, tagged(7)).vlan, 6U);
    EXPECT_EQ(asked.answer(2, untagged).vlan, 6U);
    EXPECT_EQ(asked.answer(2, tagged(7)).vlan, 7U);
    ASSERT_EQ(asked.board.getContradictions().size(), 2U);
    EXPECT_EQ(
        asked.board.getContradictions()[0].text,
        "0.0 is addTag in VLAN 6 (0x6, written \"6\") and VLAN 7 (0x7, written \"7\"), of which a frame "
        "can get one tag; counted here: VLAN 6 (0x6, written \"6\").");
}

TEST(IntentTest, OneOfEachKindContradictsNothing) {
    Asked const asked(boardOf(tagVlan("5", member(0, "addTag", "stripTag")) +
                              tagVlan("6", member(0, "addTagIfUntagged", "stripTag")) +
                              tagVlan("7", member(0, "validateTag", "validateTag"))));
    EXPECT_TRUE(asked.board.getContradictions().empty());
    EXPECT_EQ(asked.answer(0, tagged(7)).vlan, 5U);
}

TEST(IntentTest, AnIdThatNoTagCarriesIsNoVlan) {
    std::string const members = member(0, "addTag", "validateTag") + member(1, "validateTag", "validateTag");
    Asked const asked(boardOf(tagVlan("fff", members) + tagVlan("0", members)));
    EXPECT_EQ(asked.board.getContradictions().size(), 2U);
    EXPECT_EQ(asked.answer(0, untagged).must, 0U);
    EXPECT_TRUE(Asked(boardOf(tagVlan("ffe", members))).board.getContradictions().empty());
}

TEST(IntentTest, PortVlansAlone) {
    Asked const asked(boardOf(portVlan({0, 1, 9}) + portVlan({1, 2})));
    EXPECT_EQ(asked.answer(0, untagged).must, set({1}));
    EXPECT_EQ(asked.answer(0, untagged).untagged, set({1}));
    EXPECT_EQ(asked.answer(1, untagged).must, set({0, 2}));
    EXPECT_EQ(asked.answer(9, untagged).must, 0U);
    EXPECT_EQ(asked.answer(0, tagged(5)).must, 0U);
    EXPECT_EQ(asked.answer(0, tagged(5)).may, set({1}));
    EXPECT_EQ(asked.answer(0, tagged(5)).tagsAt(1, tagged(5)), tagged(5));
    EXPECT_EQ(asked.answer(3, untagged).allowed(), 0U);
    EXPECT_EQ(asked.reason(0, untagged, 1), Reason::inPortVlan);
    EXPECT_EQ(asked.reason(0, tagged(5), 1), Reason::undecided);
}

// Either both are in no port-based VLAN, or one has both: then the tags are all that counts.
TEST(IntentTest, PortVlansBesideTags) {
    Asked const asked(boardOf(vlanFive + portVlan({0, 1, 5})));
    EXPECT_EQ(asked.answer(0, untagged).must, set({1}));
    EXPECT_EQ(asked.answer(0, untagged).may, set({2, 3, 4}));
    EXPECT_EQ(asked.answer(0, untagged).untagged, set({1, 4}));
    EXPECT_EQ(asked.answer(2, tagged(5)).must, set({3, 4}));
    EXPECT_EQ(asked.answer(2, tagged(5)).may, set({0, 1}));
    // In a VLAN by tags, but the frame is in none.
    EXPECT_EQ(asked.answer(0, tagged(6)).must, 0U);
    EXPECT_EQ(asked.answer(0, tagged(6)).may, set({1, 5}));
    EXPECT_EQ(asked.answer(5, untagged).must, set({0, 1}));
}

TEST(IntentTest, MembersOfATrunkDoNotSendToOneAnother) {
    std::string const trunk = "<trunk id='1'><port id='2'/><port id='3'/></trunk>";
    Asked const asked(boardOf(vlanFive, trunk));
    EXPECT_EQ(asked.answer(2, tagged(5)).must, set({0, 1, 4}));
    EXPECT_EQ(asked.answer(0, untagged).must, set({1, 2, 3, 4}));
    EXPECT_EQ(asked.reason(2, tagged(5), 3), Reason::sameTrunk);
    EXPECT_EQ(asked.board.getSwitches().at(0).trunks, std::vector<PortSet>{set({2, 3})});
}

TEST(IntentTest, ATrunkOfOneIsNone) {
    Asked const asked(boardOf(vlanFive, "<trunk id='1'><port id='2'/></trunk>"));
    EXPECT_TRUE(asked.board.getSwitches().at(0).trunks.empty());
    EXPECT_EQ(asked.answer(2, tagged(5)).must, set({0, 1, 3, 4}));
}

namespace {

std::string groupVlan(unsigned switchId) {
    std::string const group = "<forwardedMulticastGroup>239.1.2.3</forwardedMulticastGroup>";
    return tagVlan("5", member(0, "addTagIfUntagged", "stripTag", group, switchId) +
                            member(1, "addTagIfUntagged", "stripTag", "", switchId) +
                            member(2, "validateTag", "validateTag", group, switchId)) +
           tagVlan("6", member(1, "validateTag", "validateTag", "", switchId) +
                            member(3, "validateTag", "validateTag", "", switchId));
}

} // namespace

TEST(IntentTest, GroupsReachListedMembersOfTheirVlan) {
    Asked const marvell(boardOf(groupVlan(0)));
    EXPECT_EQ(marvell.group(0, untagged).must, set({2}));
    EXPECT_EQ(marvell.group(0, untagged).may, set({1}));
    EXPECT_EQ(marvell.group(1, untagged).must, set({0, 2}));
    Asked const vitesse(boardOf(groupVlan(1)));
    EXPECT_EQ(vitesse.group(0, untagged, 1).must, set({2}));
    EXPECT_EQ(vitesse.group(0, untagged, 1).may, 0U);
    FrameKind const frame{untagged, FrameKind::Destination::group, groupAddress};
    EXPECT_EQ(vitesse.intent.explain(1, 0, frame, vitesse.intent.ask(1, 0, frame), 1),
              Reason::receiverNotInGroup);
    // Other groups and other VLANs are not narrowed.
    EXPECT_EQ(vitesse.answer(0, untagged, 1).must, set({1, 2}));
    EXPECT_EQ(vitesse.group(1, tagged(6), 1).must, set({3}));
    // A sender outside the VLAN.
    EXPECT_EQ(vitesse.group(3, tagged(5), 1).allowed(), 0U);
}

TEST(IntentTest, GroupsOfPortsHaveNoVlan) {
    Asked const asked(boardOf(""));
    ASSERT_EQ(asked.board.getGroups().size(), 1U);
    EXPECT_EQ(asked.board.getGroups()[0].vlan, std::nullopt);
    EXPECT_EQ(asked.board.getGroups()[0].hardwareAddress, 0x01005E010209U);
    EXPECT_EQ(asked.board.getGroups()[0].members.at(0), set({6}));
}

TEST(IntentTest, HardwareAddressesOfGroups) {
    EXPECT_EQ(IntendedBoard::hardwareAddressOf("239.1.2.3"), groupAddress);
    EXPECT_EQ(IntendedBoard::hardwareAddressOf("224.129.2.3"), groupAddress);
    EXPECT_EQ(IntendedBoard::hardwareAddressOf("10.1.2.3"), std::nullopt);
    EXPECT_EQ(IntendedBoard::hardwareAddressOf("239.1.2"), std::nullopt);
}

TEST(IntentTest, TagsInWords) {
    EXPECT_EQ(Tags::none().describe(), "untagged");
    EXPECT_EQ(Tags::one(5).describe(), "tagged 5");
    EXPECT_EQ((Tags{2, 5, 3}).describe(), "tagged 5 and 3");
}
