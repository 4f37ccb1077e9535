#include "switchctl/draw/BoardDrawing.hpp"

#include <gmock/gmock.h>

#include "reference_host/XmlDocument.hpp"

using board::BoardReading;
using reference_host::XmlDocument;
using switchctl::draw::BoardDrawing;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string drawingOf(std::string const& content, std::string const& title = "board") {
    auto const document = XmlDocument::fromText("<board>" + content + "</board>", "test");
    board::BoardReading const board(*document);
    return BoardDrawing(board, board::Cables({}, board::IntendedBoard(*document)), title).getDot();
}

std::string portOf(char const* id, char const* connectedTo, char const* portStatus = "forwarding") {
    return std::string("<port id='") + id + "' connectedTo='" + connectedTo + "' portStatus='" + portStatus +
           "'/>";
}

std::string switchOf(char const* id, std::string const& content) {
    return std::string("<switches><switch id='") + id + "' switchModel='88e6096'>" + content +
           "</switch></switches>";
}

TEST(BoardDrawingTest, ASwitchIsATableOfItsPorts) {
    std::string const text = drawingOf(switchOf("4", portOf("1", "external", "disabled")));
    EXPECT_THAT(text, HasSubstr("\n  switch4 [shape=plain, label=<<TABLE"));
    EXPECT_THAT(text, HasSubstr("<B>switch 4  88E6096</B>"));
    EXPECT_THAT(text, HasSubstr(">1</TD><TD ALIGN=\"LEFT\" BGCOLOR=\"#E8F1FA\">external</TD>"
                                "<TD ALIGN=\"LEFT\" BGCOLOR=\"#E8F1FA\">disabled</TD>"));
}

TEST(BoardDrawingTest, IdsAreAsTheyAreWrittenWhereTheyAreOthers) {
    std::string const text = drawingOf(switchOf("04", portOf("07", "external")) +
                                       R"(<vlan id='5\n"' typeOfVlan='tagBasedVlan'/>)");
    EXPECT_THAT(text, HasSubstr("<B>switch 4 (written &quot;04&quot;)  88E6096</B>"));
    EXPECT_THAT(text, HasSubstr("PORT=\"link7\">7 (written &quot;07&quot;)</TD>"));
    EXPECT_THAT(text, HasSubstr("label=\"VLAN 5 (0x5, written &quot;5&#92;n&quot;&quot;)\\ntag-based\""));
}

TEST(BoardDrawingTest, TheTitleIsText) {
    EXPECT_THAT(drawingOf(switchOf("0", ""), "a<b>&\"c\""),
                HasSubstr("label=<<B>a&lt;b&gt;&amp;&quot;c&quot;</B>>"));
}

TEST(BoardDrawingTest, AMembershipIsDashedWhereTheTagIsTaken) {
    std::string const text =
        drawingOf(switchOf("0", portOf("1", "external") + portOf("2", "external")) +
                  "<vlan id='5' typeOfVlan='tagBasedVlan'>"
                  "<port switchId='0' portId='1' ingress='addTag' egress='stripTag'/>"
                  "<port switchId='0' portId='2' ingress='validateTag' egress='validateTag'/>"
                  "<port switchId='0' portId='3' ingress='validateTag' egress='validateTag'/></vlan>"
                  "<vlan id='6' typeOfVlan='tagBasedVlan'>"
                  "<port switchId='0' portId='1' ingress='stripTag' egress='stripTag'/>"
                  "<port switchId='0' portId='2' ingress='addTag'/></vlan>");
    EXPECT_THAT(text, Not(HasSubstr("-- vlan6"))) << "the library does not put them in";
    EXPECT_THAT(text, HasSubstr("label=\"VLAN 5 (0x5, written &quot;5&quot;)\\ntag-based\""));
    EXPECT_THAT(text, HasSubstr("  switch0:port1:e -- vlan5:w [color=\"#0072B2\", style=dashed]\n"));
    EXPECT_THAT(text, HasSubstr("  switch0:port2:e -- vlan5:w [color=\"#0072B2\", style=solid]\n"));
    EXPECT_THAT(text, Not(HasSubstr("port3:e")));
}

TEST(BoardDrawingTest, PortBasedVlansKnowNoTags) {
    EXPECT_THAT(
        drawingOf(switchOf("0", portOf("1", "external")) +
                  "<vlan id='10' typeOfVlan='portBasedVlan'><port switchId='0' portId='1'/></vlan>"),
        testing::AllOf(HasSubstr("  vlan16 [shape=box"),
                       HasSubstr("label=\"VLAN 16 (0x10, written &quot;10&quot;)\\nport-based\""),
                       HasSubstr("  switch0:port1:e -- vlan16:w [color=\"#0072B2\", style=dashed]\n")));
}

TEST(BoardDrawingTest, EachVlanHasItsColour) {
    std::string const text = drawingOf(switchOf("0", "") + "<vlan id='1' typeOfVlan='tagBasedVlan'/>"
                                                           "<vlan id='2' typeOfVlan='tagBasedVlan'/>");
    EXPECT_THAT(text, HasSubstr("  vlan1 [shape=box, style=rounded, color=\"#0072B2\""));
    EXPECT_THAT(text, HasSubstr("  vlan2 [shape=box, style=rounded, color=\"#D55E00\""));
}

TEST(BoardDrawingTest, TrunkMembersSayWhichTrunk) {
    std::string const text = drawingOf(switchOf("0", portOf("8", "external") + portOf("9", "external") +
                                                         "<trunk id='7'><port id='8'/></trunk>"));
    EXPECT_THAT(text, HasSubstr("PORT=\"port8\">trunk 7</TD>"));
    EXPECT_THAT(text, HasSubstr("PORT=\"port9\"> </TD>"));
}

TEST(BoardDrawingTest, TheCpuPortIsTheFirstOfTheLastSwitchThatHasOne) {
    std::string const text =
        drawingOf(switchOf("0", portOf("1", "cpu")) + switchOf("1", portOf("2", "cpu") + portOf("3", "cpu")) +
                  switchOf("2", portOf("4", "external")));
    EXPECT_THAT(text, HasSubstr(">1</TD><TD ALIGN=\"LEFT\" BGCOLOR=\"#FFE9B3\">cpu</TD>"));
    EXPECT_THAT(text, HasSubstr(">2</TD><TD ALIGN=\"LEFT\" BGCOLOR=\"#FFE9B3\">cpu (CPU port)</TD>"));
    EXPECT_THAT(text, HasSubstr(">3</TD><TD ALIGN=\"LEFT\" BGCOLOR=\"#FFE9B3\">cpu</TD>"));
}

TEST(BoardDrawingTest, InterlinksNeedTwoSwitches) {
    std::string const first = switchOf("0", portOf("1", "switchInterlink"));
    EXPECT_THAT(drawingOf(first), Not(HasSubstr("interlink between")));
    std::string const text = drawingOf(first + switchOf("1", portOf("2", "switchInterlink")));
    EXPECT_THAT(text, HasSubstr("label=\"interlink between\\nswitches\""));
    EXPECT_THAT(text, HasSubstr("  interlink:e -- switch0:link1:w"));
    EXPECT_THAT(text, HasSubstr("  interlink:e -- switch1:link2:w"));
}

TEST(BoardDrawingTest, CablesOfTheDocumentAreEdgesAndLabelsStandBehindNumbers) {
    std::string const text =
        drawingOf("<switches><switch id='0' switchModel='88e6096' label='rack'><port id='1' "
                  "connectedTo='switchInterlink' connectsTo='1.2' label='up'/><port id='3' "
                  "connectedTo='switchInterlink'/></switch></switches>" +
                  switchOf("1", portOf("2", "switchInterlink")));
    EXPECT_THAT(text, HasSubstr("<B>switch 0 &quot;rack&quot;  88E6096</B>"));
    EXPECT_THAT(text, HasSubstr("PORT=\"link1\">1 &quot;up&quot;</TD>"));
    EXPECT_THAT(text, HasSubstr("  switch0:link1:w -- switch1:link2:w ["));
    EXPECT_THAT(text, Not(HasSubstr("interlink:e -- switch0:link1:w")));
    EXPECT_THAT(text, HasSubstr("interlink:e -- switch0:link3:w"));
}

} // namespace
