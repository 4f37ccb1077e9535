// A board with ten mistakes, and one whose chips kept what another document had brought up.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "board/audit/ChipScope.hpp"
#include "switchctl/bringup/BringUpCommand.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/CommandRun.hpp"

using nlohmann::json;
using switchctl::bringup::BringUpCommand;
using switchctl::bringup::DocumentChecks;
using switchctl::bringup::FindingCounts;
using test_support::CommandRun;
using testing::Contains;
using testing::HasSubstr;

namespace {

std::string const careless = BOARDS_FOLDER "/careless.xml";
std::string const warm = BOARDS_FOLDER "/warm-restart.xml";
std::string const before = BOARDS_FOLDER "/before-restart.xml";

/// The line below the comment of each mistake, 1 first.
std::vector<int> linesOfMistakes() {
    std::ifstream file(careless);
    std::vector<int> lines;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.find("Mistake " + std::to_string(lines.size() + 1) + ":") != std::string::npos) {
            lines.push_back(number + 1);
        }
    }
    return lines;
}

std::vector<std::string> linesOf(std::string const& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

TEST(BoardsOfMistakesTest, CheckNamesEachMistakeThatTheDocumentShows) {
    std::vector<int> const lines = linesOfMistakes();
    ASSERT_EQ(lines.size(), 10U);
    json const found = json::parse(ChildProcess::runSwitchctl({"check", careless, "--json"}).out)["findings"];
    std::vector<std::string> const checks = {
        "trunk-of-one-port",     "port-type-unknown",     "port-id-not-a-number", "",
        "tag-attribute-unknown", "member-switch-unknown", "group-misplaced",      "vlan-id-reads-differently",
        "number-does-not-fit",   "vlan-without-members"};
    for (std::size_t mistake = 0; mistake < checks.size(); ++mistake) {
        std::set<std::string> here;
        for (json const& finding : found) {
            if (finding["line"] == lines[mistake]) {
                here.insert(finding["check"]);
            }
        }
        // An uplink that is switched off may be meant.
        if (!checks[mistake].empty()) {
            EXPECT_THAT(here, Contains(checks[mistake])) << "mistake " << mistake + 1;
        }
    }
}

TEST(BoardsOfMistakesTest, BringUpShowsWhatBecameOfThem) {
    ChildProcess const child = ChildProcess::runSwitchctl({"bring-up", careless, "--simulate"});
    EXPECT_EQ(child.status, 12);
    for (char const* const line :
         {"  switchInterlink   disabled   0.10\n", "0.(no number)", "  unknown           forwarding 0.3\n",
          "trunk 1: 1.0 1.25 (no such port)\n", "; left out: 0.2 7.3\n", "VLAN 256 (0x100, written \"100\")",
          "VLAN 4294967295 (0xffffffff, written \"100000005\")  tag-based: no members\n",
          "VLAN 6 (0x6, written \"6\")  tag-based: no members\n", "239.1.2.3 in VLAN 0 (0x0): no members"}) {
        EXPECT_THAT(child.out, HasSubstr(line));
    }
}

TEST(BoardsOfMistakesTest, AnAuditSeesWhatAWarmRestartLeaves) {
    ChildProcess const child = ChildProcess::runSwitchctl({"audit", warm, "--simulate=" + before});
    EXPECT_EQ(child.status, 1);
    EXPECT_THAT(child.out,
                HasSubstr("switch 0  port 8  PortControl  PortState  expected 0x3 after reset, found 0x0\n"));
    EXPECT_THAT(child.out, HasSubstr("switch 0  VTU  VID 6 (0x6)  expected none, found the entry\n"));
    EXPECT_THAT(child.out, HasSubstr(", 11 deviations\n"));
}

TEST(BoardsOfMistakesTest, BringUpOverWarmChipsReportsWhatItDoesNotSet) {
    auto const leaveRegisters = [](simulation::SimulatedBoard& board) {
        board::ModelBringUp earlier(before);
        board::ChipScope const scope(earlier, 0, board::ChipScope::Extent::everything);
        for (auto const& [location, isWritten] : scope.getRegisters()) {
            unsigned const address = location.address.address;
            board.getChip(0).poke(location.unit, address,
                                  earlier.getBoard().getChip(0).peek(location.unit, address));
        }
    };
    DocumentChecks const none = [](reference_host::XmlDocument&) { return FindingCounts(); };
    CommandRun const run = CommandRun::of<BringUpCommand>(
        {"bring-up", warm, "--simulate"}, std::string("/nonexistent/mem"), none, leaveRegisters);
    EXPECT_EQ(run.status, chips::ExitStatus::notAsDetermined);
    EXPECT_THAT(run.errors, HasSubstr("does not show what start-up determines"));
    ChildProcess const audit = ChildProcess::runSwitchctl({"audit", warm, "--simulate=" + before});
    std::size_t ofTheUplink = 0;
    for (std::string const& line : linesOf(audit.out)) {
        if (line.find("switch 0  port 8  ") == 0) {
            EXPECT_THAT(run.out, HasSubstr("\n  " + line + "\n"));
            ++ofTheUplink;
        }
    }
    EXPECT_EQ(ofTheUplink, 8U);
}
