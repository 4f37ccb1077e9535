#include "board/paths/CableWalk.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "chips/ToolError.hpp"
#include "tests/support/TestDocument.hpp"

using board::Cables;
using board::CableWalk;
using board::PortSet;
using Place = board::CableWalk::Place;
using Tags = board::FrameKind::Tags;

namespace {

/// Three switches; each floods, untagged, but to VLAN 5 on its ports 1 and 2, which are tagged.
class CableWalkTest : public testing::Test {
protected:
    static std::string switchText(unsigned id) {
        return "<switch id='" + std::to_string(id) + "' switchModel='88e6096'/>";
    }

    CableWalk::Result walk(std::vector<std::string> const& texts, Place const& from) {
        Cables const cables(texts, board);
        return CableWalk(cables,
                         [this](Place const& at, Tags const&) {
                             PortSet const self = PortSet{1} << at.second;
                             return std::vector<CableWalk::Copies>{{Tags::none(), 0b1001U & ~self, isCertain},
                                                                   {Tags::one(5), 0b0110U & ~self, true}};
                         })
            .run(from, Tags::none());
    }

    std::string refusalOf(std::vector<std::string> const& texts) {
        try {
            Cables const cables(texts, board);
        } catch (chips::ToolError const& error) {
            EXPECT_EQ(error.getStatus(), chips::ExitStatus::usage);
            return error.what();
        }
        return "";
    }

    test_support::TestDocument document{"<board><switches>" + switchText(0) + switchText(1) + switchText(2) +
                                        "</switches></board>"};
    board::IntendedBoard board{document};
    bool isCertain = true;
};

} // namespace

TEST_F(CableWalkTest, WithoutCablesNobodyIsReachedOverThem) {
    EXPECT_TRUE(walk({}, {0, 0}).arrivals.empty());
}

TEST_F(CableWalkTest, FramesCrossCablesWithTheTagsThatTheyLeaveWith) {
    auto const result = walk({"0.1=1.1"}, {0, 0});
    CableWalk::Arrivals const expected{
        {{1, 0}, {{Tags::none(), true}}}, {{1, 2}, {{Tags::one(5), true}}}, {{1, 3}, {{Tags::none(), true}}}};
    EXPECT_EQ(result.arrivals, expected);
    EXPECT_TRUE(result.loop.empty());
}

TEST_F(CableWalkTest, AWayIsAsCertainAsItsSteps) {
    isCertain = false;
    auto const result = walk({"0.1=1.1"}, {0, 0});
    EXPECT_FALSE(result.arrivals.at({1, 0}).at(Tags::none()));
    EXPECT_TRUE(result.arrivals.at({1, 2}).at(Tags::one(5)));
    EXPECT_FALSE(walk({"0.3=1.1"}, {0, 0}).arrivals.at({1, 2}).at(Tags::one(5)));
    // One certain way is enough.
    EXPECT_TRUE(walk({"0.3=1.1", "0.1=1.3"}, {0, 0}).arrivals.at({1, 2}).at(Tags::one(5)));
}

TEST_F(CableWalkTest, AChainIsFollowedToItsEnd) {
    auto const result = walk({"0.1=1.1", "1.2=2.2"}, {0, 0});
    EXPECT_EQ(result.arrivals.count({2, 1}), 1U);
    EXPECT_EQ(result.arrivals.count({1, 2}), 0U) << "is no station";
    EXPECT_TRUE(result.loop.empty());
}

TEST_F(CableWalkTest, ARingIsALoop) {
    auto const result = walk({"0.1=1.1", "1.2=2.2", "2.1=0.2"}, {0, 0});
    EXPECT_EQ(result.loop.size(), 3U);
    EXPECT_EQ(result.arrivals.count({2, 0}), 1U);
}

TEST_F(CableWalkTest, CablesThatCannotBeAreRefused) {
    EXPECT_EQ(refusalOf({"0.1=1.1", "0.2=1.10"}), "");
    EXPECT_EQ(refusalOf({"0.1"}), "cable \"0.1\": not of the form SWITCH.PORT=SWITCH.PORT");
    EXPECT_EQ(refusalOf({"0.1=1.1x"}), "cable \"0.1=1.1x\": not of the form SWITCH.PORT=SWITCH.PORT");
    EXPECT_EQ(refusalOf({"0.1=1.11"}), "cable \"0.1=1.11\": the board has no port 1.11");
    EXPECT_EQ(refusalOf({"0.1=3.1"}), "cable \"0.1=3.1\": the board has no port 3.1");
    EXPECT_EQ(refusalOf({"0.1=1.1", "1.1=2.1"}), "cable \"1.1=2.1\": 1.1 has a cable already, to 0.1");
    EXPECT_EQ(refusalOf({"0.1=0.1"}), "cable \"0.1=0.1\": 0.1 has a cable already, to 0.1");
}

TEST(CablesTest, EndsOfDifferentVlansAreMismatches) {
    test_support::TestDocument document(R"(<board><switches>
<switch id='0' switchModel='88e6096'/><switch id='1' switchModel='vsc7390'/></switches>
<vlan id='5' typeOfVlan='tagBasedVlan'>
<port switchId='0' portId='1' ingress='validateTag' egress='validateTag'/>
<port switchId='1' portId='2' ingress='validateTag' egress='validateTag'/></vlan>
<vlan id='a' typeOfVlan='tagBasedVlan'>
<port switchId='1' portId='2' ingress='validateTag' egress='validateTag'/></vlan></board>)");
    board::IntendedBoard const board(document);
    EXPECT_EQ(Cables({"0.1=1.2"}, board).getMismatches(),
              std::vector<std::string>{"cable 0.1=1.2: 1.2 is in VLAN 10 (0xa, written \"a\"), 0.1 is not"});
    EXPECT_EQ(Cables({"0.2=1.23"}, board).getMismatches(), std::vector<std::string>{});
}

TEST(CablesTest, ATagThatIsStrippedOrReplacedOnTheWayIsAMismatch) {
    test_support::TestDocument document(R"(<board><switches>
<switch id='0' switchModel='88e6096'/><switch id='1' switchModel='88e6096'/></switches>
<vlan id='5' typeOfVlan='tagBasedVlan'>
<port switchId='0' portId='1' ingress='validateTag' egress='stripTag'/>
<port switchId='0' portId='2' ingress='validateTag' egress='validateTag'/>
<port switchId='1' portId='1' ingress='validateTag' egress='validateTag'/>
<port switchId='1' portId='2' ingress='addTagIfUntagged' egress='stripTag'/>
<port switchId='1' portId='3' ingress='validateTag' egress='validateTag'/></vlan>
<vlan id='6' typeOfVlan='tagBasedVlan'>
<port switchId='1' portId='3' ingress='addTag' egress='validateTag'/></vlan></board>)");
    board::IntendedBoard const board(document);
    std::string const five = "VLAN 5 (0x5, written \"5\")";
    EXPECT_EQ(Cables({"0.1=1.1"}, board).getMismatches(),
              std::vector<std::string>{"cable 0.1=1.1: frames of " + five +
                                       " leave 0.1 untagged (line 4), 1.1 takes these for no VLAN's"});
    EXPECT_EQ(Cables({"0.2=1.1"}, board).getMismatches(), std::vector<std::string>{});
    EXPECT_EQ(Cables({"0.1=1.2"}, board).getMismatches(),
              std::vector<std::string>{"cable 0.1=1.2: frames of " + five +
                                       " leave 1.2 untagged (line 7), 0.1 takes these for no VLAN's"});
    EXPECT_THAT(Cables({"0.2=1.3"}, board).getMismatches(),
                testing::ElementsAre("cable 0.2=1.3: frames of " + five +
                                         " leave 0.2 tagged 5 (line 5), 1.3 takes "
                                         "these for VLAN 6 (0x6, written \"6\")'s",
                                     "cable 0.2=1.3: 1.3 is in VLAN 6 (0x6, written \"6\"), 0.2 is not"));
}

namespace {

/// Three switches, each with a port 1 of that connectsTo; none where it is empty.
std::string connected(std::vector<std::string> const& targets) {
    std::string text = "<board><switches>";
    for (std::size_t id = 0; id < targets.size(); ++id) {
        text += "\n<switch id='" + std::to_string(id) + "' switchModel='88e6096'><port id='1'" +
                (targets[id].empty() ? "" : " connectsTo='" + targets[id] + "'") + "/></switch>";
    }
    return text + "</switches></board>";
}

std::string refusalOf(std::vector<std::string> const& targets, std::vector<std::string> const& typed = {}) {
    test_support::TestDocument document(connected(targets));
    try {
        Cables const cables(typed, board::IntendedBoard(document), "board.xml");
    } catch (chips::ToolError const& error) {
        EXPECT_EQ(error.getStatus(),
                  typed.empty() ? chips::ExitStatus::badDocument : chips::ExitStatus::usage);
        return error.what();
    }
    return "";
}

} // namespace

TEST(CablesTest, OfTheDocumentAreThereFromOneEndOrBoth) {
    for (auto const& targets :
         {std::vector<std::string>{"2.1", "", "0.1"}, {"2.1", "", ""}, {"02.1", "", ""}}) {
        test_support::TestDocument document(connected(targets));
        Cables const cables({"1.4=1.5", "2.1=0.1"}, board::IntendedBoard(document));
        EXPECT_EQ(cables.getTexts(), (std::vector<std::string>{"0.1=2.1", "1.4=1.5"}));
        ASSERT_TRUE(cables.follow({2, 1}).has_value());
        EXPECT_EQ(cables.follow({2, 1})->getText(), "0.1");
    }
}

TEST(CablesTest, OfTheDocumentThatCannotBeAreRefusedWithTheirLine) {
    EXPECT_EQ(refusalOf({"2.1", "2.1", ""}),
              "board.xml:3: the connectsTo of 1.1: 2.1 has a cable already, to 0.1");
    EXPECT_EQ(refusalOf({"", "", "3.1"}), "board.xml:4: the connectsTo of 2.1: the board has no port 3.1");
    EXPECT_EQ(refusalOf({"", "", "x"}), "board.xml:4: the connectsTo of 2.1: not of the form SWITCH.PORT");
    EXPECT_EQ(refusalOf({"0.1", "", ""}),
              "board.xml:2: the connectsTo of 0.1: 0.1 has a cable already, to 0.1");
    EXPECT_EQ(refusalOf({"2.1", "", "0.1"}, {"0.1=1.1"}),
              "cable \"0.1=1.1\": 0.1 has a cable already, to 2.1");
}

TEST(CablesTest, OfTheDocumentThatEndAtAnUnreadSwitchDoNotCount) {
    test_support::TestDocument document(connected({"2.1", "1.3", "0.1"}));
    Cables const cables({}, board::IntendedBoard(document), "board.xml", {2});
    EXPECT_EQ(cables.getTexts(), std::vector<std::string>{"1.1=1.3"});
    EXPECT_EQ(cables.getLeftOut(), std::vector<std::string>{"0.1=2.1"});
}
