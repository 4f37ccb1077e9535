#include "switchctl/bringup/BoardSummary.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "reference_host/XmlDocument.hpp"

using board::BoardReading;
using board::BoardSession;
using switchctl::bringup::BoardSummary;
using testing::HasSubstr;

namespace {

struct Result {
    bool complete = false;
    std::string summary;
    std::string complaints;
};

/// Brings up the board of the document, without the chips that are missing.
Result summaryOf(std::string const& text, std::set<unsigned> const& missing = {}, bool simulate = true) {
    auto const document = reference_host::XmlDocument::fromText("<board>" + text + "</board>", "board.xml");
    board::BoardSession::Options options;
    options.simulate = simulate;
    options.noHardwareAccess = !simulate;
    options.board.missingSwitches = missing;
    board::BoardSession session(*document, options);
    board::BoardReading const boardDocument(*document);
    EXPECT_TRUE(session.bringUp().populated);
    switchctl::bringup::BoardSummary const summary(boardDocument, session);
    std::ostringstream out;
    std::ostringstream complaints;
    summary.print(out);
    summary.printComplaints(complaints);
    return {session.isComplete(boardDocument), out.str(), complaints.str()};
}

std::string switchElement(unsigned int id, std::string const& content) {
    return "<switch id='" + std::to_string(id) + "' switchModel='88e6096'>" + content + "</switch>";
}

std::string port(unsigned int id, std::string const& kind, std::string const& state = "forwarding") {
    return "<port id='" + std::to_string(id) + "' connectedTo='" + kind + "' portStatus='" + state + "'/>";
}

TEST(BoardSummaryTest, TellsFoundFromMissing) {
    Result const result = summaryOf("<switches>" + switchElement(0, port(0, "cpu")) + switchElement(2, "") +
                                        "<switch id='3' switchModel='other'/><switch id='4'/></switches>",
                                    {2});
    EXPECT_FALSE(result.complete);
    EXPECT_THAT(result.summary, HasSubstr("switches: 1 of 4 found\n"
                                          "  switch 0  88e6096   found, 1 ports\n"
                                          "  switch 2  88e6096   missing: the chip does not answer\n"
                                          "  switch 3  other     missing: no such driver\n"
                                          "  switch 4            missing: no such driver\n"));
}

TEST(BoardSummaryTest, ShowsIdsAsTheyAreWrittenWhereTheyAreOthers) {
    Result const result =
        summaryOf("<switches><switch id='4294967296' switchModel='88e6096'/></switches>"
                  "<vlan id='10' typeOfVlan='tagBasedVlan'><port switchId='0' portId='1'>"
                  "<forwardedMulticastGroup>239.0.0.9</forwardedMulticastGroup></port></vlan>",
                  {}, false);
    EXPECT_THAT(result.summary,
                HasSubstr("  switch 65535 (written \"4294967296\")  88e6096   found, 0 ports\n"));
    EXPECT_THAT(result.summary, HasSubstr("  VLAN 16 (0x10, written \"10\")  tag-based:"));
    EXPECT_THAT(result.summary, HasSubstr("  239.0.0.9 in VLAN 10 (0xa, written \"10\"):"));
}

TEST(BoardSummaryTest, IsCompleteWhenEverySwitchIsThere) {
    EXPECT_TRUE(
        summaryOf("<switches>" + switchElement(0, "") + switchElement(1, "") + "</switches>").complete);
}

TEST(BoardSummaryTest, KnowsBothChipFamilies) {
    Result const result = summaryOf("<switches>" + switchElement(0, port(0, "cpu")) +
                                        "<switch id='1' switchModel='vsc7390'/></switches>",
                                    {}, false);
    EXPECT_TRUE(result.complete);
    EXPECT_THAT(result.summary, HasSubstr("  switch 0  88e6096   found, 1 ports\n"
                                          "  switch 1  vsc7390   found, 1 ports\n"));
}

TEST(BoardSummaryTest, IsNotCompleteWithoutAnySwitch) {
    Result const result = summaryOf("<switches/>");
    EXPECT_FALSE(result.complete);
    EXPECT_THAT(result.summary, HasSubstr("switches: 0 of 0 found\n"
                                          "ports: none\n"
                                          "VLANs: none\n"
                                          "trunks: none\n"
                                          "multicast groups: none\n"
                                          "CPU port: none\n"));
}

TEST(BoardSummaryTest, GroupsPortsByTypeAndState) {
    Result const result = summaryOf(
        "<switches>" + switchElement(0, port(0, "external") + port(1, "cpu") + port(2, "external")) +
        switchElement(1,
                      port(0, "external", "disabled") + port(1, "external") + port(2, "smac", "disabled")) +
        "</switches>");
    EXPECT_THAT(result.summary, HasSubstr("ports\n"
                                          "  external          disabled   1.0\n"
                                          "  external          forwarding 0.0 0.2 1.1\n"
                                          "  smac              disabled   1.2\n"
                                          "  cpu               forwarding 0.1\n"));
    EXPECT_THAT(result.summary, HasSubstr("CPU port: 0.1\n"));
}

TEST(BoardSummaryTest, ShowsMembersThatCountAndMembersThatDoNot) {
    Result const result = summaryOf(
        "<switches>" + switchElement(0, port(0, "external") + port(1, "external")) +
        switchElement(1, port(1, "external")) + "</switches>" +
        "<vlan id='2' typeOfVlan='portBasedVlan'><port switchId='0' portId='0'/>"
        "<port switchId='0' portId='1'/><port switchId='1' portId='1'/><port switchId='0' portId='9'/>"
        "<port switchId='8' portId='0'/></vlan>");
    EXPECT_THAT(
        result.summary,
        HasSubstr("VLANs\n  VLAN 2 (0x2, written \"2\")  port-based: 0.0 0.1; left out: 1.1 0.9 8.0\n"));
    EXPECT_THAT(
        result.complaints,
        HasSubstr("  error    SwitchManager::addVlanPort. Attempt to add vlan to unknown port 0.9\n"));
    EXPECT_THAT(
        result.complaints,
        HasSubstr("  error    SwitchManager::addVlanPort. Attempt to add vlan to unknown switch 8\n"));
}

TEST(BoardSummaryTest, ShowsHowMembersTreatTags) {
    Result const result =
        summaryOf("<switches>" + switchElement(0, port(0, "external") + port(1, "external")) + "</switches>" +
                  "<vlan id='10' typeOfVlan='tagBasedVlan'>"
                  "<port switchId='0' portId='0' ingress='addTag' egress='stripTag'/>"
                  "<port switchId='0' portId='1'/></vlan>");
    EXPECT_THAT(
        result.summary,
        HasSubstr(
            "VLANs\n  VLAN 16 (0x10, written \"10\")  tag-based: 0.0(addTag/stripTag); left out: 0.1\n"));
}

TEST(BoardSummaryTest, ShowsTrunksAndGroups) {
    Result const result = summaryOf(
        "<switches>" +
        switchElement(0, port(8, "switchInterlink") + "<trunk id='4'><port id='8'/><port id='9'/></trunk>" +
                             "<port id='1' connectedTo='external' portStatus='forwarding'>"
                             "<forwardedMulticastGroup>239.0.0.9</forwardedMulticastGroup></port>") +
        "</switches>");
    EXPECT_THAT(result.summary,
                HasSubstr("trunks\n  switch 0 trunk 4 (not set up: the library has no trunks of "
                          "an 88E6096): 0.8 0.9 (no such port)\n"));
    EXPECT_THAT(result.summary, HasSubstr("multicast groups\n  239.0.0.9 in VLAN 0 (0x0): 0.1\n"));
}

TEST(BoardSummaryTest, ShowsTrunksThatTheLibrarySetsUpWithoutAnotherWord) {
    Result const result = summaryOf("<switches><switch id='1' switchModel='vsc7390'>" + port(8, "external") +
                                    port(9, "external") +
                                    "<trunk id='4'><port id='8'/><port id='9'/></trunk></switch></switches>");
    EXPECT_THAT(result.summary, HasSubstr("trunks\n  switch 1 trunk 4: 1.8 1.9\n"));
}

TEST(BoardSummaryTest, NamesAPortWithoutANumberAsSuch) {
    Result const result =
        summaryOf("<switches><switch id='0' switchModel='88e6096'>"
                  "<port id='-1' connectedTo='external' portStatus='disabled'/></switch></switches>");
    EXPECT_THAT(result.summary, HasSubstr("  external          disabled   0.(no number)\n"));
}

TEST(BoardSummaryTest, NamesTrunksAsTheDocumentDoes) {
    Result const result =
        summaryOf("<switches>\n<switch id='1' switchModel='vsc7390'>" + port(8, "external") +
                  "\n<trunk><port id='8'/></trunk>\n<trunk id='x'><port id='8'/></trunk>"
                  "<trunk id='-1'><port id='8'/></trunk><trunk id='02'/></switch></switches>");
    EXPECT_THAT(result.summary, HasSubstr("trunks\n"
                                          "  switch 1 trunk without an id, line 3: 1.8\n"
                                          "  switch 1 trunk 0 (written \"x\"): no members\n"
                                          "  switch 1 trunk -1: 1.8\n"
                                          "  switch 1 trunk 2 (written \"02\"): no members\n"));
}

TEST(BoardSummaryTest, ShowsAVlanWithoutMembersAsSuch) {
    // Its members are looked for with the decimal digits of what is read as hexadecimal.
    Result const result =
        summaryOf("<switches>" + switchElement(0, port(0, "external")) + "</switches>" +
                  "<vlan id='a' typeOfVlan='tagBasedVlan'><port switchId='0' portId='0' ingress='addTag' "
                  "egress='stripTag'/></vlan>");
    EXPECT_THAT(result.summary, HasSubstr("VLANs\n  VLAN 10 (0xa, written \"a\")  tag-based: no members\n"));
}

TEST(BoardSummaryTest, ShowsARepeatedMessageOnceWithItsNumber) {
    Result const result = summaryOf("<switches>" + switchElement(0, port(0, "cpu")) + "</switches>" +
                                    "<vlan id='2' typeOfVlan='portBasedVlan'><port switchId='8' portId='0'/>"
                                    "<port switchId='8' portId='1'/><port switchId='8' portId='2'/></vlan>");
    EXPECT_THAT(result.complaints, HasSubstr("  error    SwitchManager::addVlanPort. Attempt to add vlan to "
                                             "unknown switch 8 (3 times)\n"));
}

TEST(BoardSummaryTest, SaysThatThereIsNothingToComplainAbout) {
    Result const result = summaryOf("<switches>" + switchElement(0, port(0, "cpu")) + "</switches>");
    EXPECT_EQ(result.complaints, "warnings and errors: none\n");
}

TEST(BoardSummaryTest, ShowsWarningsAndErrorsInOrder) {
    Result const result = summaryOf("<switches>" + switchElement(0, port(0, "&#10;cpu")) + "</switches>");
    EXPECT_EQ(result.complaints,
              "warnings and errors\n"
              "  error    ManagedSwitchPort::ManagedSwitchPort: Unknown port type \\ncpu \n"
              "  warning  SwitchManager::initialisingAction There is no CPU Port set\n");
}

TEST(BoardSummaryTest, CountsNothingOnHardware) {
    Result const result =
        summaryOf("<switches>" + switchElement(0, port(0, "cpu")) + "</switches>", {}, false);
    EXPECT_THAT(result.summary, HasSubstr("register accesses: not counted on hardware\n"));
    EXPECT_EQ(result.summary.find("predicted"), std::string::npos);
}

} // namespace
