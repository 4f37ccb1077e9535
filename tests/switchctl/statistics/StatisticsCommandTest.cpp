// `switchctl statistics` as it is typed.

#include "switchctl/statistics/StatisticsCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "StatisticsBench.hpp"
#include "switchctl/bringup/BringUpCommand.hpp"
#include "tests/support/CommandRun.hpp"

using chips::ExitStatus;
using switchctl::statistics::StatisticsCommand;
using test_support::CommandRun;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr char const* mixed = EXAMPLES_FOLDER "/trap-mixed.xml";

CommandRun statistics(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "statistics");
    return CommandRun::of<StatisticsCommand>(arguments, std::string("/nonexistent/mem"));
}

} // namespace

TEST(StatisticsCommandTest, TheTextIsTheLibrarysOwn) {
    auto const noFindings = [](reference_host::XmlDocument&) { return switchctl::bringup::FindingCounts(); };
    CommandRun const bringUp = CommandRun::of<switchctl::bringup::BringUpCommand>(
        {"bring-up", mixed, "--simulate", "--statistics", "0.1", "--statistics", "3.1"},
        std::string("/nonexistent/mem"), noFindings);
    CommandRun const run = statistics({mixed, "0.1", "3.1", "--simulate"});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.out, StartsWith("statistics of port 0.1\ninGoodOctets\t0000000000000000\tinBadOctets\t"));
    EXPECT_THAT(run.out, HasSubstr("\nstatistics of port 3.1\ninGoodandBadOctets\t000000\t"));
    EXPECT_THAT(bringUp.out, HasSubstr(run.out));
}

TEST(StatisticsCommandTest, SeedsAreInTheText) {
    CommandRun const run = statistics({mixed, "0.1", "3.1", "--simulate", "--seed", "0.1/inUnicast=26",
                                       "--seed", "3.1/outTotalDrops=305419896"});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_THAT(run.out, HasSubstr("inUnicast\t\t0000001a\t"));
    EXPECT_THAT(run.out, HasSubstr("\toutTotalDrops\t\t12345678\n"));
}

TEST(StatisticsCommandTest, AllPortsInTheOrderOfSwitchesAndPorts) {
    CommandRun const run = statistics({StatisticsBench::pathOf("trap-minimal"), "--simulate"});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_THAT(run.out, StartsWith("statistics of port 0.0\n"));
    EXPECT_LT(run.out.find("statistics of port 0.8\n"), run.out.find("statistics of port 0.9\n"));
}

TEST(StatisticsCommandTest, JsonHasValuesAndUnits) {
    CommandRun const run =
        statistics({mixed, "3.1", "0.1", "--simulate", "--format", "json", "--seed",
                    "0.1/inGoodOctets=18446744073709551615", "--seed", "3.1/outErrorPackets=9", "--seed",
                    "0.1/inDiscards=65537", "--seed", "0.1/outFiltered=65535", "--seed", "0.1/late=4"});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    auto const json = nlohmann::json::parse(run.out);
    EXPECT_EQ(json["file"], mixed);
    EXPECT_EQ(json["read"], "the models of " + std::string(mixed));
    EXPECT_EQ(json["unread"], nlohmann::json::array());
    ASSERT_EQ(json["ports"].size(), 2U);
    auto const& vitesse = json["ports"][0];
    EXPECT_EQ(vitesse["switch"], 3);
    EXPECT_EQ(vitesse["port"], 1);
    EXPECT_EQ(vitesse["chip"], "vsc7390");
    EXPECT_EQ(vitesse["counters"].size(), 12U);
    EXPECT_EQ(vitesse["counters"]["outErrorPackets"], nlohmann::json({{"value", 9}, {"unit", "frames"}}));
    auto const& marvell = json["ports"][1];
    EXPECT_EQ(marvell["chip"], "88e6096");
    EXPECT_EQ(marvell["counters"].size(), 33U);
    EXPECT_EQ(marvell["counters"]["inGoodOctets"]["value"], 18446744073709551615U);
    EXPECT_EQ(marvell["counters"]["inGoodOctets"]["unit"], "bytes");
    EXPECT_EQ(marvell["counters"]["inDiscards"]["value"], 65537);
    EXPECT_EQ(marvell["counters"]["outFiltered"]["value"], 65535);
    EXPECT_EQ(marvell["counters"]["late"], nlohmann::json({{"value", 4}, {"unit", "events"}}));
}

TEST(StatisticsCommandTest, OpenMetricsHasAFamilyForEachCounter) {
    CommandRun const run = statistics(
        {mixed, "0.1", "0.2", "--simulate", "--format", "openmetrics", "--seed", "0.2/inUnicast=12"});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_THAT(
        run.out,
        HasSubstr("# TYPE switch_port_in_unicast_frames counter\n"
                  "# UNIT switch_port_in_unicast_frames frames\n"
                  "# HELP switch_port_in_unicast_frames Good unicast frames received.\n"
                  "switch_port_in_unicast_frames_total{switch=\"0\",port=\"1\",chip=\"88e6096\"} 0\n"
                  "switch_port_in_unicast_frames_total{switch=\"0\",port=\"2\",chip=\"88e6096\"} 12\n"));
    EXPECT_THAT(run.out, EndsWith("} 0\n# EOF\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("vsc7390")));
}

TEST(StatisticsCommandTest, AChipThatIsNotThereIsAStatusOfItsOwn) {
    std::string const other = "--simulate=" + StatisticsBench::pathOf("trap-minimal");
    CommandRun const text = statistics({mixed, "0.1", "1.3", other});
    EXPECT_EQ(text.status, chips::ExitStatus::noStatistics);
    EXPECT_EQ(static_cast<int>(text.status), 6);
    EXPECT_THAT(text.out, HasSubstr("outFiltered\t\t00000000\nstatistics of port 1.3\n  not available\n"));
    EXPECT_THAT(text.errors, StartsWith("switchctl: port 1.3: switch 1: no 88e6096 answers"));
    CommandRun const metrics = statistics({mixed, "0.1", "1.3", other, "--format", "openmetrics"});
    EXPECT_EQ(metrics.status, chips::ExitStatus::noStatistics);
    EXPECT_THAT(metrics.out, HasSubstr("{switch=\"0\",port=\"1\","));
    EXPECT_THAT(metrics.out, Not(HasSubstr("switch=\"1\"")));
    EXPECT_THAT(metrics.errors, StartsWith("switchctl: switch 1: no 88e6096 answers"));
    CommandRun const json = statistics({mixed, "1.3", other, "--format", "json"});
    EXPECT_EQ(json.status, chips::ExitStatus::noStatistics);
    EXPECT_EQ(nlohmann::json::parse(json.out)["ports"][0]["counters"], nlohmann::json::object());
}

TEST(StatisticsCommandTest, APortTwiceIsReadOnce) {
    CommandRun const run = statistics({mixed, "0.1", "0.1", "--simulate", "--format", "json"});
    EXPECT_EQ(nlohmann::json::parse(run.out)["ports"].size(), 1U);
}
