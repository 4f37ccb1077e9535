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

CommandRun explain(std::string const& example, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"explain", std::string(EXAMPLES_FOLDER) + "/" + example + ".xml"});
    return CommandRun::of<ExplainCommand>(arguments);
}

} // namespace

TEST(ExplainCommandTest, AFrameThatIsDelivered) {
    CommandRun const run = explain("minimal", {"0.1", "to", "0.0"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.out, StartsWith("in at 0.1 untagged, "));
    EXPECT_THAT(run.out, HasSubstr("\n  M7   VLAN (likely)\n         port 1/PortControl2:802.1QMode is 0x3\n"
                                   "         port 1/DefaultVLAN:DefaultVID is 0x5\n"
                                   "         VTU/VID 5 is there\n"));
    EXPECT_THAT(run.out, HasSubstr("\nby the document it must get there: both are in the frame's VLAN ("));
    EXPECT_THAT(run.out, EndsWith("\ndelivered tagged 5 at 0.0\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("let it pass")));
}

TEST(ExplainCommandTest, AFrameThatIsDropped) {
    CommandRun const run = explain("three-switches", {"0.1", "untagged", "to", "0.0"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out, HasSubstr("\nstops here: M7, because VID 1 is not in the VTU, port 1 is secure\n"
                                   "what would let it pass:\n"
                                   "  port 1/PortControl2:802.1QMode=0x0\n"
                                   "by the document it must get there: a port-based VLAN has both ("));
    EXPECT_THAT(run.out, Not(HasSubstr("delivered")));
}

TEST(ExplainCommandTest, AFrameThatGoesElsewhere) {
    CommandRun const run = explain("access-point", {"0.0", "to", "0.6"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out,
                HasSubstr("\nstops here: sent untagged at 0.1, untagged at 0.2, tagged 4 at 0.8, tagged 4 at "
                          "0.10, but not at 0.6\nwhat would let it pass:\n"
                          "  VTU/VID 4:MemberTag6=member, untagged\n"));
    EXPECT_THAT(
        run.out,
        HasSubstr("\nby the document it must not get there: the receiver is not in the frame's VLAN"));
}

TEST(ExplainCommandTest, PortsOfAVsc7390ThatAreOff) {
    CommandRun const run = explain("video-switch", {"2.20", "to", "2.0"});
    EXPECT_EQ(run.status, ExitStatus::notDelivered);
    EXPECT_THAT(run.out, HasSubstr("stops here: V1, because port 20 has no link or its receiver is off\n"
                                   "what would let it pass:\n"
                                   "  port 20/MAC_CFG: receiver and transmitter on, out of reset and "
                                   "port 0/MAC_CFG: receiver and transmitter on, out of reset and "
                                   "analyser/SRCMASKS_20:Ports=0x1\n"));
}

TEST(ExplainCommandTest, Groups) {
    CommandRun const run = explain("video-switch", {"2.1", "to", "239.20.0.1"});
    EXPECT_EQ(run.status, ExitStatus::success);
    EXPECT_THAT(run.out, EndsWith("\ndelivered untagged at 2.4, untagged at 2.5, untagged at 2.7\n"));
    EXPECT_EQ(explain("video-switch", {"2.0", "to", "all"}).status, ExitStatus::notDelivered);
}

TEST(ExplainCommandTest, OverCables) {
    CommandRun const ring = explain("three-switches", {"1.1", "to", "0.0", "--cable", "0.8=1.9"});
    EXPECT_EQ(ring.status, ExitStatus::success);
    EXPECT_THAT(ring.out, HasSubstr("\nsent tagged 2 at 1.9\n"));
    EXPECT_THAT(ring.out, HasSubstr("\nin at 0.8 tagged 2, "));
    EXPECT_THAT(ring.out, EndsWith("\ndelivered tagged 2 at 0.0\n"));
    CommandRun const mixed = explain("mixed", {"0.1", "to", "3.0", "--cable", "0.10=3.20"});
    EXPECT_EQ(mixed.status, ExitStatus::notDelivered);
    EXPECT_THAT(mixed.out, HasSubstr("\nstops here: V10, because the source mask leaves no port\n"));
    // The wrong cable: the frame stops at its first switch.
    EXPECT_THAT(explain("mixed", {"0.1", "to", "3.0", "--cable", "0.9=3.20"}).out,
                Not(HasSubstr("in at 3.20")));
}

TEST(ExplainCommandTest, WrongLines) {
    EXPECT_EQ(explain("mixed", {"0.1", "to", "3.0"}).errors,
              "switchctl: no --cable leads from switch 0 to switch 3\n");
    EXPECT_EQ(explain("minimal", {"0.1", "to", "0.11"}).errors, "switchctl: the board has no port 0.11\n");
    EXPECT_EQ(explain("minimal", {"0.11", "to", "0.1"}).errors, "switchctl: the board has no port 0.11\n");
    for (auto const& words : std::vector<std::vector<std::string>>{
             {"x", "to", "0.1"}, {"0.1", "to"}, {"0.1"}, {"0.1", "to", "0.11"}, {"0.1", "to", "3.0"}}) {
        EXPECT_EQ(explain("minimal", words).status, ExitStatus::usage);
    }
}

TEST(ExplainCommandTest, JsonHasEachStep) {
    json const way = json::parse(explain("three-switches", {"0.1", "to", "0.0", "--json"}).out);
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
}
