// `switchctl plan` as it is typed.

#include "switchctl/plan/PlanCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "board/ModelBringUp.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using board::ModelBringUp;
using chips::ExitStatus;
using simulation::AccessLog;
using switchctl::plan::PlanCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}

CommandRun plan(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "plan");
    return CommandRun::of<PlanCommand>(arguments);
}

nlohmann::json jsonOf(std::string const& example) {
    CommandRun const run = plan({pathOf(example), "--json"});
    EXPECT_EQ(run.status, chips::ExitStatus::success) << run.errors;
    return nlohmann::json::parse(run.out);
}

class PlanOfExampleTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST(PlanCommandTest, SaysWhatIsWrittenByChipAndUnit) {
    CommandRun const run = plan({pathOf("trap-minimal")});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_THAT(run.out, StartsWith("switch 0 (88e6096)\n  global 1\n"));
    EXPECT_THAT(run.out, ContainsRegex(" ms  ATUControl +0x0a  0x0140\n")) << "300 s, 20 steps of 15";
    EXPECT_THAT(run.out, ContainsRegex("\n  port 9\n +[0-9.]+ ms  PortControl +0x04  0x007f\n"));
    EXPECT_THAT(run.out, ContainsRegex("VTUVID +0x06  0x1005  Valid 0x0->0x1, VID 0xfff .4095.->0x5\n"));
    EXPECT_THAT(run.out, ContainsRegex("\npredicted: [0-9]+ register writes and [0-9]+ reads, [0-9]+ bus "
                                       "accesses, [0-9.]+ ms of bus time; ready after [0-9.]+ ms"));
}

TEST(PlanCommandTest, TheMixedBoardHasBothChips) {
    CommandRun const run = plan({pathOf("trap-mixed")});
    EXPECT_THAT(run.out, HasSubstr(" (88e6096)\n"));
    EXPECT_THAT(run.out, HasSubstr(" (vsc7390)\n"));
    EXPECT_THAT(run.out, ContainsRegex("MAC_CFG +0x00  0x[0-9a-f]{8}")) << "registers of 32 bits";
}

TEST_P(PlanOfExampleTest, HasTheWritesThatABringUpMakes) {
    nlohmann::json const json = jsonOf(GetParam());
    std::vector<std::string> planned;
    std::uint64_t last = 0;
    for (auto const& step : json["steps"]) {
        for (auto const& write : step["writes"]) {
            planned.push_back(step["chip"].get<std::string>() + "/" + step["unit"].get<std::string>() + "/" +
                              write["register"].get<std::string>() + "=" +
                              std::to_string(write["value"].get<std::uint32_t>()));
            EXPECT_GE(write["nanoseconds"].get<std::uint64_t>(), last) << "in order";
            last = write["nanoseconds"].get<std::uint64_t>();
        }
    }
    board::ModelBringUp bringUp(pathOf(GetParam()));
    std::vector<std::string> made;
    unsigned reads = 0;
    for (AccessLog::Entry const& entry : bringUp.getBoard().getLog().getEntries()) {
        if (entry.kind == AccessLog::Kind::write) {
            made.push_back(entry.chip + "/" + entry.unit + "/" + entry.registerName + "=" +
                           std::to_string(entry.value));
        } else {
            ++reads;
        }
    }
    EXPECT_EQ(planned, made);
    EXPECT_EQ(json["predicted"]["writes"], made.size());
    EXPECT_EQ(json["predicted"]["reads"], reads);
    EXPECT_EQ(json["predicted"]["busNanoseconds"], bringUp.getBoard().getBusNanoseconds());
}

TEST_P(PlanOfExampleTest, CountsByUnitAddUp) {
    nlohmann::json const json = jsonOf(GetParam());
    unsigned writes = 0;
    unsigned reads = 0;
    for (auto const& count : json["counts"]) {
        writes += count["writes"].get<unsigned>();
        reads += count["reads"].get<unsigned>();
    }
    EXPECT_EQ(json["predicted"]["writes"], writes);
    EXPECT_EQ(json["predicted"]["reads"], reads);
}

TEST_P(PlanOfExampleTest, IsTheSameEveryTime) {
    EXPECT_EQ(plan({pathOf(GetParam())}).out, plan({pathOf(GetParam())}).out);
}

INSTANTIATE_TEST_SUITE_P(Examples, PlanOfExampleTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));

TEST(PlanCommandTest, RefusesWhatCannotBeBroughtUp) {
    EXPECT_EQ(plan({"/nonexistent.xml"}).status, chips::ExitStatus::badDocument);
    TemporaryFile const malformed("<switches>");
    EXPECT_EQ(plan({malformed.path()}).status, chips::ExitStatus::badDocument);
    TemporaryFile const empty("<board/>");
    EXPECT_EQ(plan({empty.path()}).status, chips::ExitStatus::startUpFailed);
    TemporaryFile const unknown("<switches><switch id='1' switchModel='abacus'/></switches>");
    CommandRun const run = plan({unknown.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::startUpFailed);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "switchctl: " + unknown.path() +
                              ": not every switch would come up\n  switch 1: no model of a \"abacus\"\n");
    EXPECT_EQ(plan({}).status, chips::ExitStatus::usage);
}

TEST(PlanCommandTest, HelpHasExamplesAndExitStatuses) {
    std::string const help = plan({"--help"}).out;
    EXPECT_THAT(help, HasSubstr("switchctl plan before.xml after.xml"));
    EXPECT_THAT(help, HasSubstr("Exit status:"));
}
