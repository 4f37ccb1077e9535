// `switchctl status` as it is typed.

#include "switchctl/status/StatusCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::status::StatusCommand;
using test_support::CommandRun;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string const mixed = EXAMPLES_FOLDER "/trap-mixed.xml";

CommandRun run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "status");
    return CommandRun::of<StatusCommand>(arguments, std::string("/nonexistent/mem"));
}

} // namespace

TEST(StatusCommandTest, ShowsTheSwitchesAndPortsThatAreAskedFor) {
    CommandRun const shown = run({mixed, "2", "0.1", "0.1", "--simulate"});
    EXPECT_EQ(shown.status, ExitStatus::success) << shown.errors;
    EXPECT_THAT(shown.out, HasSubstr("; errors: what the counters hold at present, nothing is cleared\n"));
    EXPECT_THAT(shown.out, HasSubstr("switch 2  88e6096\nport type "));
    EXPECT_THAT(shown.out,
                ContainsRegex("\n2.10 interlink up +1000 +full on +forwarding 1 +kept +secure +- +0\n"));
    EXPECT_THAT(shown.out,
                ContainsRegex("\n0.1 +external +down - +- +off +forwarding 5 +kept +secure 0141:0c80 0\n$"));
    EXPECT_THAT(shown.out, Not(HasSubstr("\n0.2")));
    std::istringstream lines(shown.out);
    std::string line;
    std::getline(lines, line); // has the path
    while (std::getline(lines, line)) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(StatusCommandTest, JsonHasTheVlanInAllWritings) {
    CommandRun const shown = run({mixed, "0.1", "--simulate", "--json"});
    EXPECT_EQ(shown.status, ExitStatus::success);
    json const port = json::parse(shown.out)["ports"][0];
    EXPECT_EQ(port["link"], "down");
    EXPECT_EQ(port["megabits"], nullptr);
    EXPECT_EQ(port["defaultVlan"], (json{{"vlan", 5}, {"hexadecimal", "0x5"}, {"written", "5"}}));
}

TEST(StatusCommandTest, FollowPrintsTheTableOrALineAPort) {
    CommandRun const text = run({mixed, "0", "--simulate", "--follow", "--count", "1", "--interval", "0.1"});
    EXPECT_EQ(text.status, ExitStatus::success) << text.errors;
    EXPECT_THAT(text.out, HasSubstr("what the counters hold at the start"));
    CommandRun const lines =
        run({mixed, "0.1", "--simulate", "--follow", "--count", "1", "--interval", "0.1", "--json"});
    json const line = json::parse(lines.out);
    EXPECT_EQ(line["changes"], json::array());
    EXPECT_EQ(line["port"], 1);
}

// It says what it is, and is gone before its ports are read.
TEST(StatusCommandTest, ZerosOfAChipThatIsGoneAreNotTakenForRead) {
    CommandRun const shown = run({mixed, "0.1", "0.2", "--simulate", "--fault", "all-zeros:60"});
    EXPECT_EQ(shown.status, ExitStatus::registerFailed);
    EXPECT_THAT(shown.out, ContainsRegex("\n0.1 +external( +unread){10}\n0.2 +smac( +unread){10}\n$"));
    EXPECT_THAT(shown.errors, HasSubstr("switchctl: switch 0: no 88e6096 answers\n"));
}

TEST(StatusCommandTest, RefusesWhatTheBoardDoesNotHave) {
    CommandRun refused = run({mixed, "7", "--simulate"});
    EXPECT_EQ(refused.status, ExitStatus::usage);
    EXPECT_EQ(refused.errors, "switchctl: switch \"7\": " + mixed + " has no switch 7 (it has 0, 1, 2, 3)\n");
    refused = run({mixed, "0.11", "--simulate"});
    EXPECT_EQ(refused.errors, "switchctl: port \"0.11\": switch 0 (88e6096) has the ports 0 to 10\n");
    refused = run({mixed, "x", "--simulate"});
    EXPECT_EQ(refused.errors, "switchctl: port \"x\": neither SWITCH.PORT nor SWITCH\n");
    EXPECT_EQ(run({mixed, "--interval", "1"}).status, ExitStatus::usage);
    EXPECT_EQ(run({mixed}).status, ExitStatus::noHardware);
    EXPECT_EQ(run({"/nonexistent/board.xml"}).status, ExitStatus::badDocument);
}
