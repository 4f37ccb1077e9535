// Boards with one mistake each: the way of a frame shows it, and what is said to let the frame pass does.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "switchctl/explain/ExplainCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::explain::ExplainCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string memberAt(std::string const& switchId, std::string const& port, std::string const& ingress,
                     std::string const& egress) {
    return "<port switchId='" + switchId + "' portId='" + port + "' ingress='" + ingress + "' egress='" +
           egress + "'/>";
}

std::string const uplink0 = memberAt("0", "8", "validateTag", "validateTag");
std::string const uplink1 = memberAt("1", "9", "validateTag", "validateTag");

/// Two switches with a cable from 0.8 to 1.9; VLAN 5 is at 0.1 and 1.2. The ports of switch 0 are in
/// lines 2 to 12, those of switch 1 in lines 14 to 24, the VLAN's members in lines 26 to 29.
std::string boardWith(std::string const& member0, std::string const& member1, int unlisted = -1,
                      std::string const& status = "forwarding") {
    std::string text = "<board><switches><switch id='0' switchModel='88e6096'>\n";
    for (int const id : {0, 1}) {
        for (int port = 0; port < 11; ++port) {
            std::string const state = id == 0 && port == 8 + id ? status : "forwarding";
            text += id == 0 && port == unlisted ? ""
                                                : "<port id='" + std::to_string(port) + "' connectedTo='" +
                                                      (port == 8 + id ? "switchInterlink" : "external") +
                                                      "' portStatus='" + state + "'/>";
            text += "\n";
        }
        text += id == 0 ? "</switch><switch id='1' switchModel='88e6096'>\n"
                        : "</switch></switches><vlan id='5' typeOfVlan='tagBasedVlan'>\n";
    }
    return text + memberAt("0", "1", "addTagIfUntagged", "stripTag") + "\n" + member0 + "\n" + member1 +
           "\n" + memberAt("1", "2", "addTagIfUntagged", "stripTag") + "\n</vlan></board>\n";
}

CommandRun explainOn(TemporaryFile const& board, std::vector<std::string> words) {
    words.insert(words.begin(), {"explain", board.path()});
    words.insert(words.end(), {"--cable", "0.8=1.9"});
    return CommandRun::of<ExplainCommand>(words, std::string("/nonexistent/mem"));
}

} // namespace

TEST(ExplainMistakesTest, ABoardWithoutMistakes) {
    TemporaryFile const board(boardWith(uplink0, uplink1));
    CommandRun const run = explainOn(board, {"0.1", "to", "1.2"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, HasSubstr("\nout tagged 5 at 0.8\n"));
    EXPECT_THAT(run.out,
                HasSubstr("\nin at 1.9, tagged 5, VLAN 5 (0x5, written \"5\"), " + board.path() + ":23\n"));
    EXPECT_THAT(run.out, EndsWith("\ndelivered untagged at 1.2\n"));
}

TEST(ExplainMistakesTest, AMissingMemberAtTheFarEndOfACable) {
    TemporaryFile const board(boardWith(uplink0, ""));
    CommandRun const run = explainOn(board, {"0.1", "to", "1.2"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(
        run.out,
        EndsWith("         1/port 9/PortControl2:802.1QMode = 0x3\n"
                 "         1/port 9/DefaultVLAN:DefaultVID = 0x1\n"
                 "         1/VTU/VID 5:MemberTag9 = not a member\n"
                 "stops here: M7 (VLAN) of switch 1 on the way to 1.2, because port 9 is secure and no "
                 "member of VLAN 5\n"
                 "what would let it pass: make 1.9 a member of VLAN 5 (0x5, written \"5\")\n"
                 "  in the chip, tried one by one on the model:\n"
                 "    VTU/VID 5:MemberTag9=member, untagged\n"
                 "    port 9/PortControl2:802.1QMode=0x0\n"
                 "by the document it must not get from 1.9 to 1.2: the frame belongs to no VLAN\n"
                 "not delivered to 1.2\n"));
}

TEST(ExplainMistakesTest, AMissingMemberAtTheNearEndOfACable) {
    TemporaryFile const board(boardWith("", uplink1));
    CommandRun const run = explainOn(board, {"0.1", "to", "1.2"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out, HasSubstr("         0/VTU/VID 5:MemberTag8 = not a member\n"
                                   "stops here: M12 (masks) of switch 0 on the way to 0.8, because "));
    EXPECT_THAT(
        run.out,
        HasSubstr(
            "\nwhat would let it pass: make 0.8 a member of VLAN 5 (0x5, written \"5\"), and list it with "
            "portStatus=\"forwarding\"\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("in at 1.9")));
}

TEST(ExplainMistakesTest, AnUplinkThatStripsTags) {
    TemporaryFile const board(boardWith(memberAt("0", "8", "validateTag", "stripTag"), uplink1));
    CommandRun const run = explainOn(board, {"0.1", "to", "1.2"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out, HasSubstr("  M14  tags when sent, " + board.path() + ":27\n"));
    EXPECT_THAT(run.out, HasSubstr("\nout untagged at 0.8\n"));
    EXPECT_THAT(run.out, HasSubstr("\nin at 1.9, untagged, " + board.path() + ":23\n"));
    EXPECT_THAT(
        run.out,
        HasSubstr(
            "stops here: M7 (VLAN) of switch 1 on the way to 1.2, because VID 1 is not in the VTU, port "
            "9 is secure\nwhat would let it pass: make 1.9 a member of a tag-based VLAN with "
            "ingress=\"addTagIfUntagged\", or let 0.8 send the frame with its tag "
            "(egress=\"validateTag\", " +
            board.path() + ":27)\n"));
}

TEST(ExplainMistakesTest, AnInterlinkThatIsClosed) {
    TemporaryFile const board(boardWith(uplink0, uplink1, -1, "disabled"));
    CommandRun const there = explainOn(board, {"0.1", "to", "1.2"});
    EXPECT_EQ(there.status, ExitStatus::notDelivered);
    EXPECT_THAT(there.out, HasSubstr("  M13  sending ports, " + board.path() + ":10 (likely"));
    EXPECT_THAT(there.out, HasSubstr("\nwhat would let it pass: list 0.8 with portStatus=\"forwarding\"\n"));
    CommandRun const back = explainOn(board, {"1.2", "to", "0.1"});
    EXPECT_EQ(back.status, ExitStatus::notDelivered);
    EXPECT_THAT(back.out,
                HasSubstr("         0/port 8/PhysicalControl:LinkValue = 0x0\n"
                          "stops here: M1 (link) of switch 0 on the way to 0.1, because port 8 has no link\n"
                          "what would let it pass: list 0.8 with portStatus=\"forwarding\"\n"
                          "  in the chip, tried one by one on the model:\n"
                          "    port 8/PhysicalControl:LinkValue=0x1 and port 8/PortControl:PortState=0x3\n"));
}

TEST(ExplainMistakesTest, APortThatIsNotListed) {
    TemporaryFile const board(boardWith(uplink0, uplink1, 3));
    CommandRun const run = explainOn(board, {"0.3", "to", "0.1"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, testing::StartsWith("in at 0.3, untagged; the document does not list the port\n"));
    EXPECT_THAT(run.out, HasSubstr("         0/port 3/PortControl2:802.1QMode = 0x0\n"));
    EXPECT_THAT(
        run.out,
        HasSubstr(
            "\nby the document it must not get from 0.3 to 0.1: the document does not list the sender\n"));
    TemporaryFile const listed(boardWith(uplink0, uplink1));
    EXPECT_EQ(explainOn(listed, {"0.3", "to", "0.1"}).status, ExitStatus::notDelivered);
}

TEST(ExplainMistakesTest, AddressesAreFollowedOverCables) {
    TemporaryFile const board(boardWith(uplink0, uplink1));
    CommandRun const run = explainOn(board, {"0.1", "to", "02:00:00:00:00:77"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, EndsWith("\ndelivered untagged at 1.2\n"));
    CommandRun const broken = explainOn(board, {"0.1", "tagged", "77", "to", "02:00:00:00:00:77"});
    EXPECT_EQ(broken.status, ExitStatus::notDelivered);
    EXPECT_THAT(broken.out, HasSubstr("in at 0.1, tagged 77, VLAN 77 (0x4d), "));
    EXPECT_THAT(
        broken.out,
        HasSubstr("stops here: M7 (VLAN) of switch 0, because VID 77 is not in the VTU, port 1 is secure\n"));
    EXPECT_THAT(broken.out, EndsWith("\nnot delivered to 02:00:00:00:00:77\n"));
}

TEST(ExplainMistakesTest, AMemberThatTheLibraryLeavesOut) {
    TemporaryFile const board(boardWith(uplink0, memberAt("1", "8", "validateTag", "validateTag")));
    CommandRun const run = explainOn(board, {"1.8", "tagged", "5", "to", "1.2"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(
        run.out,
        HasSubstr("\nwhat would let it pass: make 1.8 a member of VLAN 5 (0x5, written \"5\"); " +
                  board.path() +
                  ":28 makes 1.8 a member of VLAN 5 (0x5, written \"5\"), but the library leaves it out, "
                  "since port 8 of another switch is one already\n"));
}

// The document is right; the chips were brought up by another one.
TEST(ExplainMistakesTest, ChipsThatAreNotAsTheDocumentSays) {
    TemporaryFile const board(boardWith(uplink0, uplink1));
    TemporaryFile const before(boardWith(uplink0, ""));
    CommandRun const same = explainOn(board, {"0.1", "to", "1.2", "--live", "--simulate"});
    EXPECT_EQ(same.status, ExitStatus::success);
    EXPECT_EQ(same.out, explainOn(board, {"0.1", "to", "1.2"}).out);
    CommandRun const other = explainOn(board, {"0.1", "to", "1.2", "--live", "--simulate=" + before.path()});
    EXPECT_EQ(other.status, ExitStatus::notDelivered);
    EXPECT_THAT(
        other.out,
        HasSubstr("         1/VTU/VID 5:MemberTag9 = not a member\nstops here: M7 (VLAN) of switch 1 "));
    EXPECT_THAT(other.out,
                HasSubstr("\nby the document it must get from 1.9 to 1.2: both are in the frame's VLAN\n"));
    EXPECT_EQ(explainOn(board, {"0.1", "to", "1.2", "--live"}).status, ExitStatus::noHardware);
    EXPECT_EQ(explainOn(board, {"0.1", "to", "1.2", "--simulate"}).status, ExitStatus::usage);
}
