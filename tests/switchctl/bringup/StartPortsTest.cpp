// `bring-up --start-ports`: which ports it starts, what it tells of them, and that reading back expects them
// so.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "switchctl/bringup/BringUpCommand.hpp"
#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::bringup::BringUpCommand;
using switchctl::bringup::DocumentChecks;
using switchctl::bringup::FindingCounts;
using test_support::CommandRun;
using testing::HasSubstr;
using testing::Not;

namespace {

CommandRun bringUpAndStart(std::vector<std::string> words) {
    words.insert(words.begin(), {"bring-up", EXAMPLES_FOLDER "/trap-mixed.xml", "--accept-errors"});
    DocumentChecks const none = [](reference_host::XmlDocument&) { return FindingCounts(); };
    return CommandRun::of<BringUpCommand>(words, std::string("/nonexistent/mem"), none);
}

} // namespace

TEST(StartPortsTest, ForwardingPortsThatAreStoppedAreStarted) {
    CommandRun const run = bringUpAndStart({"--simulate", "--start-ports"});
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    EXPECT_THAT(run.out, HasSubstr("\nstart of forwarding ports\n"
                                   "  started:   3.0\n"
                                   "  up before: 0.0 0.1 0.2 0.10 1.3 1.4 1.5 1.10 2.6 2.7 2.8 2.10 3.1 3.2 "
                                   "3.20 3.21 3.22\n"));
    EXPECT_THAT(run.out, HasSubstr(" 0 deviations\n"));
    EXPECT_THAT(bringUpAndStart({"--simulate"}).out, Not(HasSubstr("start of forwarding ports")));
}

TEST(StartPortsTest, JsonHasEachPort) {
    json const document = json::parse(bringUpAndStart({"--simulate", "--start-ports=100", "--json"}).out);
    json const& ports = document.at("startedPorts");
    EXPECT_EQ(ports.size(), 18U);
    EXPECT_EQ(ports.at(0), (json{{"switch", 3}, {"port", 0}, {"outcome", "started"}}));
    EXPECT_EQ(ports.at(1), (json{{"switch", 0}, {"port", 0}, {"outcome", "upBefore"}}));
    EXPECT_TRUE(document.at("readBack").at("deviations").empty()) << document.at("readBack");
    EXPECT_FALSE(json::parse(bringUpAndStart({"--simulate", "--json"}).out).contains("startedPorts"));
}

TEST(StartPortsTest, OfNoOtherSpeedNorWithoutHardware) {
    CommandRun const run = bringUpAndStart({"--simulate", "--start-ports=fast"});
    EXPECT_EQ(run.status, ExitStatus::usage);
    EXPECT_THAT(run.errors, HasSubstr("--start-ports: \"fast\" is none of 10, 100, 1000"));
    EXPECT_EQ(bringUpAndStart({"--no-hardware-access", "--start-ports"}).status, ExitStatus::usage);
}
