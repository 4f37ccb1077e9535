// `switchctl explain` as it is typed.

#include "switchctl/explain/ExplainCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::explain::ExplainCommand;
using test_support::CommandRun;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::string exampleOf(std::string const& name) {
    return std::string(EXAMPLES_FOLDER) + "/" + name + ".xml";
}

CommandRun explain(std::string const& example, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"explain", exampleOf(example)});
    return CommandRun::of<ExplainCommand>(arguments, std::string("/nonexistent/mem"));
}

} // namespace

TEST(ExplainCommandTest, AFrameThatIsDelivered) {
    CommandRun const run = explain("trap-minimal", {"0.1", "to", "0.0"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.out, StartsWith("in at 0.1, untagged, "));
    EXPECT_THAT(run.out, HasSubstr("\n  M7   VLAN: VLAN 5 (0x5, written \"5\"), " +
                                   exampleOf("trap-minimal") + ":28 (likely: "));
    EXPECT_THAT(run.out, HasSubstr("\n         0/port 1/PortControl2:802.1QMode = 0x3\n"
                                   "         0/port 1/DefaultVLAN:DefaultVID = 0x5\n"
                                   "         0/VTU/VID 5:MemberTag1 = member, untagged\n"));
    EXPECT_THAT(run.out,
                HasSubstr("\nby the document it must get from 0.1 to 0.0: both are in the frame's VLAN\n"));
    EXPECT_THAT(run.out, EndsWith("\ndelivered tagged 5 at 0.0\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("let it pass")));
}

TEST(ExplainCommandTest, AFrameThatIsDropped) {
    CommandRun const run = explain("trap-three-switches", {"0.1", "untagged", "to", "0.0"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(
        run.out,
        EndsWith("\nstops here: M7 (VLAN) of switch 0 on the way to 0.0 \"processor\", because VID 1 is "
                 "not in the VTU, port 1 is secure\n"
                 "what would let it pass: make 0.1 a member of a tag-based VLAN with "
                 "ingress=\"addTagIfUntagged\"\n"
                 "  in the chip, tried one by one on the model:\n"
                 "    port 1/PortControl2:802.1QMode=0x0\n"
                 "by the document it must get from 0.1 \"service\" to 0.0 \"processor\": a "
                 "port-based VLAN has both\n"
                 "not delivered to 0.0\n"));
}

TEST(ExplainCommandTest, AFrameThatGoesElsewhere) {
    CommandRun const run = explain("trap-access-point", {"0.0", "to", "0.6"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out,
                HasSubstr("\n         0/VTU/VID 4:MemberTag6 = not a member\n"
                          "stops here: M12 (masks) of switch 0 on the way to 0.6, because the members of the "
                          "VLAN of port 0 left no port\n"
                          "it is sent untagged at 0.1, untagged at 0.2, tagged 4 at 0.8, tagged 4 at 0.10\n"
                          "what would let it pass: make 0.6 a member of VLAN 4 (0x4, written \"4\"), and "
                          "list it with portStatus=\"forwarding\"\n"
                          "  in the chip, tried one by one on the model:\n"
                          "    VTU/VID 4:MemberTag6=member, untagged\n"));
    EXPECT_THAT(
        run.out,
        HasSubstr(
            "\nby the document it must not get from 0.0 to 0.6: the receiver is not in the frame's VLAN\n"));
}

TEST(ExplainCommandTest, PortsOfAVsc7390ThatAreOff) {
    CommandRun const run = explain("trap-video-switch", {"2.20", "to", "2.0"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(
        run.out,
        HasSubstr("stops here: V1 (receiver) of switch 2 on the way to 2.0, because port 20 has no link or "
                  "its receiver is off\n"
                  "what would let it pass: let 2.20 be a smac, an hmac or a switchInterlink with "
                  "portStatus=\"forwarding\", or have the host start it (ManagedSwitchPort::setPort)\n"
                  "  in the chip, tried one by one on the model:\n"
                  "    port 20/MAC_CFG: receiver and transmitter on, out of reset and "
                  "port 0/MAC_CFG: receiver and transmitter on, out of reset and "
                  "analyser/SRCMASKS_20:Ports=0x1\n"));
}

TEST(ExplainCommandTest, Groups) {
    CommandRun const run = explain("trap-video-switch", {"2.1", "to", "239.20.0.1"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, EndsWith("\ndelivered untagged at 2.4, untagged at 2.5, untagged at 2.7\n"));
    EXPECT_EQ(explain("trap-video-switch", {"2.0", "to", "all"}).status, ExitStatus::notDelivered);
}

TEST(ExplainCommandTest, OverCables) {
    CommandRun const ring = explain("trap-three-switches", {"1.1", "to", "0.0"});
    EXPECT_EQ(ring.status, ExitStatus::success);
    EXPECT_THAT(ring.out, HasSubstr("\nout tagged 2 at 1.9\n"));
    EXPECT_THAT(ring.out, HasSubstr("\nin at 0.8, tagged 2, VLAN 2 (0x2, written \"2\"), "));
    EXPECT_THAT(ring.out, EndsWith("\ndelivered tagged 2 at 0.0 \"processor\"\n"));
    CommandRun const mixed = explain("trap-mixed", {"0.1", "to", "3.0", "--cable", "0.10=3.20"});
    EXPECT_EQ(mixed.status, ExitStatus::notDelivered);
    EXPECT_THAT(mixed.out, HasSubstr("\nstops here: V10 (masks) of switch 3 on the way to 3.0, because the "
                                     "source mask leaves no port\n"));
    // The wrong cable: the frame stops at its first switch.
    EXPECT_THAT(explain("trap-mixed", {"0.1", "to", "3.0", "--cable", "0.9=3.20"}).out,
                Not(HasSubstr("in at 3.20")));
}

TEST(ExplainCommandTest, APriorityTagIsOfNoVlan) {
    CommandRun const run = explain("trap-minimal", {"0.1", "tagged", "0", "to", "0.0"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, StartsWith("in at 0.1, tagged 0, " + exampleOf("trap-minimal") + ":14\n"));
}

TEST(ExplainCommandTest, NoFrameGoesBackWhereItCameFrom) {
    CommandRun const run = explain("trap-minimal", {"0.1", "to", "0.1"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out,
                HasSubstr("\n         0/port 1/PortBasedVLANMap:VLANTable = 0x7fd, without port 1\n"));
    EXPECT_THAT(
        run.out,
        HasSubstr("\nstops here: M12 (masks) of switch 0 on the way to 0.1, because VLANTable of port 1 "
                  "left no port\n"));
    EXPECT_THAT(run.out, HasSubstr("\nwhat would let it pass: nothing that a document could say\n"));
}

TEST(ExplainCommandTest, WrongLines) {
    EXPECT_EQ(explain("trap-mixed", {"0.1", "to", "3.0"}).errors,
              "switchctl: no --cable leads from switch 0 to switch 3\n");
    EXPECT_EQ(explain("trap-minimal", {"0.1", "to", "0.11"}).errors,
              "switchctl: the board has no port 0.11\n");
    EXPECT_EQ(explain("trap-minimal", {"0.11", "to", "0.1"}).errors,
              "switchctl: the board has no port 0.11\n");
    for (auto const& words : std::vector<std::vector<std::string>>{
             {"x", "to", "0.1"}, {"0.1", "to"}, {"0.1"}, {"0.1", "to", "0.11"}, {"0.1", "to", "3.0"}}) {
        EXPECT_EQ(explain("trap-minimal", words).status, ExitStatus::usage);
    }
}

TEST(ExplainCommandTest, JsonHasEachStep) {
    json const way = json::parse(explain("trap-three-switches", {"0.1", "to", "0.0", "--json"}).out);
    EXPECT_EQ(way["delivered"], false);
    json const& hop = way["hops"][0];
    EXPECT_EQ(hop["from"], "0.1");
    EXPECT_EQ(hop["to"], "0.0");
    EXPECT_EQ(hop["line"], 20);
    EXPECT_EQ(hop["steps"].size(), 7U);
    EXPECT_EQ(hop["steps"][6]["rule"], "M7");
    EXPECT_EQ(hop["steps"][6]["mark"], "likely");
    EXPECT_EQ(hop["steps"][6]["facts"][1],
              json({{"place", "port 1/DefaultVLAN:DefaultVID"}, {"value", "0x1"}}));
    EXPECT_EQ(hop["remedies"], json::array({json::array({"port 1/PortControl2:802.1QMode=0x0"})}));
    EXPECT_EQ(hop["stops"],
              json({{"rule", "M7"},
                    {"because", "VID 1 is not in the VTU, port 1 is secure"},
                    {"advice", "make 0.1 a member of a tag-based VLAN with ingress=\"addTagIfUntagged\""}}));
    EXPECT_EQ(hop["vid"], 1);
    EXPECT_EQ(way["deliveries"], json::array());
}

TEST(ExplainCommandTest, JsonHasWhatIsDelivered) {
    json const way = json::parse(explain("trap-minimal", {"0.1", "to", "0.0", "--json"}).out);
    EXPECT_EQ(way["delivered"], true);
    EXPECT_EQ(way["deliveries"], json::array({{{"port", "0.0"}, {"form", "tagged 5"}}}));
    json const& hop = way["hops"][0];
    EXPECT_EQ(hop["stops"], json());
    EXPECT_EQ(hop["steps"].size(), 14U);
    EXPECT_EQ(hop["steps"][6]["line"], 28);
    EXPECT_EQ(hop["steps"][1]["line"], 0);
}
