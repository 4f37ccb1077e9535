// `switchctl plan A.xml B.xml`.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "switchctl/plan/PlanCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::plan::PlanCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

CommandRun difference(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "plan");
    return CommandRun::of<PlanCommand>(arguments);
}

/// A switch with two ports to other switches, of which the second is as told.
std::string boardOf(std::string const& stateOfPort9, std::string const& more = "") {
    return "<board><switches><switch id='0' switchModel='88e6096'>"
           "<port id='8' connectedTo='switchInterlink' portStatus='forwarding'/>"
           "<port id='9' connectedTo='switchInterlink' portStatus='" +
           stateOfPort9 + "'/></switch>" + more + "</switches></board>";
}

} // namespace

TEST(PlanDifferenceTest, EqualPlansPrintNothing) {
    TemporaryFile const first(boardOf("forwarding"));
    TemporaryFile const second("<!-- the same in other words -->" + boardOf("forwarding"));
    CommandRun const run = difference({first.path(), second.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::success);
    EXPECT_EQ(run.out, "");
}

TEST(PlanDifferenceTest, NamesTheWritesThatOnlyOneHas) {
    TemporaryFile const first(boardOf("forwarding"));
    TemporaryFile const second(boardOf("disabled"));
    CommandRun const run = difference({first.path(), second.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::plansDiffer);
    EXPECT_THAT(run.out, HasSubstr("- only in " + first.path() + ": "));
    EXPECT_THAT(run.out, HasSubstr("+ only in " + second.path() + ": "));
    EXPECT_THAT(run.out, ContainsRegex("\nswitch 0\n  port 9\n"));
    EXPECT_THAT(run.out, ContainsRegex("\n  - PortControl +0x04  0x007f\n"));
    EXPECT_THAT(run.out, ContainsRegex("\n  [+] PortControl +0x04  0x007c  PortState 0x3->0x0\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("port 8"))) << "which is the same in both";
}

TEST(PlanDifferenceTest, JsonHasTheSame) {
    TemporaryFile const first(boardOf("forwarding"));
    TemporaryFile const second(boardOf("disabled"));
    CommandRun const run = difference({first.path(), second.path(), "--json"});
    EXPECT_EQ(run.status, chips::ExitStatus::plansDiffer);
    auto const json = nlohmann::json::parse(run.out);
    ASSERT_FALSE(json["differences"].empty());
    auto const& unit = json["differences"][0];
    EXPECT_EQ(unit["chip"], "switch 0");
    EXPECT_EQ(unit["unit"], "port 9");
    std::vector<std::string> states;
    for (auto const& write : unit["writes"]) {
        if (write["register"] == "PortControl") {
            states.push_back(write["only"].get<std::string>() + " " +
                             std::to_string(write["value"].get<unsigned>() & 0x3U));
        }
    }
    EXPECT_THAT(states, testing::ElementsAre("first 3", "second 0"));
    EXPECT_EQ(json["first"]["file"], first.path());
}

TEST(PlanDifferenceTest, AChipThatOnlyOneHasIsInItAltogether) {
    TemporaryFile const first(boardOf("forwarding"));
    TemporaryFile const second(boardOf(
        "forwarding", "<switch id='1' switchModel='88e6096'>"
                      "<port id='10' connectedTo='switchInterlink' portStatus='disabled'/></switch>"));
    CommandRun const run = difference({first.path(), second.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::plansDiffer);
    EXPECT_THAT(run.out, HasSubstr("\nswitch 1\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("\nswitch 0\n")));
    EXPECT_THAT(run.out, ContainsRegex("  [+] PortControl +0x04  0x007c"));
    EXPECT_THAT(run.out, Not(HasSubstr("\n  - ")));
}

TEST(PlanDifferenceTest, ADocumentThatCannotBeReadIsRefused) {
    TemporaryFile const first(boardOf("forwarding"));
    EXPECT_EQ(difference({first.path(), "/nonexistent.xml"}).status, chips::ExitStatus::badDocument);
    EXPECT_EQ(difference({"/nonexistent.xml", first.path()}).status, chips::ExitStatus::badDocument);
}
