#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "board/BoardSession.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/support/ChildProcess.hpp"

using board::BoardSession;
using simulation::Marvell88E6096TestSide;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// An example, brought up on chip models.
class Example {
public:
    explicit Example(std::string const& name)
        : _document(reference_host::XmlDocument::fromFile(std::string(EXAMPLES_FOLDER "/") + name + ".xml")),
          _session(*_document, simulated()) {
        EXPECT_TRUE(_session.bringUp().populated);
        EXPECT_TRUE(_session.getLog().getComplaints().empty());
        EXPECT_EQ(_session.getBoard()->getMisuse().getSize(), 0U);
    }

    simulation::Vsc7390TestSide& vitesse(unsigned id) { return _session.getBoard()->getVitesse(id); }
    Marvell88E6096TestSide& chip(unsigned id) { return _session.getBoard()->getMarvell(id); }

    /// The member codes of a VLAN, port 0 first: 1 untagged, 2 tagged, 3 not a member; "" when the
    /// chip does not have the VLAN.
    std::string members(unsigned id, unsigned vlan) {
        std::string codes;
        if (auto const entry = chip(id).getVtuEntry(vlan)) {
            for (unsigned const code : entry->memberTags) {
                codes += std::to_string(code);
            }
        }
        return codes;
    }

private:
    static board::BoardSession::Options simulated() {
        board::BoardSession::Options options;
        options.simulate = true;
        return options;
    }

    std::unique_ptr<reference_host::XmlDocument> _document;
    board::BoardSession _session;
};

class ExamplesTest : public testing::TestWithParam<char const*> {};

TEST_P(ExamplesTest, ComesUpWithoutComplaint) {
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", std::string(EXAMPLES_FOLDER "/") + GetParam() + ".xml",
                                    "--simulate", "--statistics", "0.1"});
    EXPECT_EQ(child.status, 0);
    EXPECT_THAT(child.out, HasSubstr("warnings and errors: none\n"));
    EXPECT_THAT(child.out, HasSubstr("driver misuse seen by the models: 0\n"));
    EXPECT_EQ(child.out.find("left out"), std::string::npos) << child.out;
    EXPECT_EQ(child.errors, "");
}

INSTANTIATE_TEST_SUITE_P(All, ExamplesTest,
                         testing::Values("home-gateway", "trap-access-point", "trap-three-switches"));

TEST(ExampleBoardsTest, TheHomeGatewayHasAllItsVlansAndSparePortsInNone) {
    Example board("home-gateway");
    EXPECT_EQ(board.chip(0).getVtu().size(), 4U);
    EXPECT_EQ(board.members(0, 2), "21111333333");
    EXPECT_EQ(board.members(0, 3), "23333133333");
    EXPECT_EQ(board.members(0, 4), "33333311233");
    EXPECT_EQ(board.members(0, 5), "23333333233");
}

TEST(ExampleBoardsTest, TheVideoRoomsHaveEachPortInOneVlan) {
    Example board("video-rooms");
    EXPECT_EQ(board.vitesse(2).getVlanEntry(2).ports, 0x7FFAU);
    EXPECT_EQ(board.vitesse(2).getVlanEntry(3).ports, 0xF8004U);
    EXPECT_EQ(board.vitesse(2).getVlanEntry(5).ports, 1U);
}

TEST(ExampleBoardsTest, TheAccessPointsVlansReachTheChip) {
    Example board("trap-access-point");
    EXPECT_EQ(board.chip(0).getVtu().size(), 3U);
    EXPECT_EQ(board.members(0, 2), "33333323222");
    EXPECT_EQ(board.members(0, 3), "33331133232");
    EXPECT_EQ(board.members(0, 4), "11133332232");
    EXPECT_EQ(board.chip(0).getAgeSeconds(), 60U);
}

TEST(ExampleBoardsTest, EachSwitchOfThreeHasItsOwnPartOfTheVlans) {
    Example board("trap-three-switches");
    EXPECT_EQ(board.members(0, 2), "23333333233");
    EXPECT_EQ(board.members(1, 2), "31133333323");
    EXPECT_EQ(board.members(2, 2), "");
    EXPECT_EQ(board.members(0, 3), "");
    EXPECT_EQ(board.members(1, 3), "33313333332");
    EXPECT_EQ(board.members(2, 3), "33331333233");
    EXPECT_EQ(board.members(0, 4), "33333133332");
    EXPECT_EQ(board.members(1, 4), "");
    EXPECT_EQ(board.members(2, 4), "33333311323");
    EXPECT_EQ(board.chip(0).getAgeSeconds(), 300U);
    EXPECT_EQ(board.chip(1).getAgeSeconds(), 60U);
    EXPECT_EQ(board.chip(2).getAgeSeconds(), 300U);
}

TEST(ExampleBoardsTest, TheMinimalBoardKeepsOutThePortsThatItLists) {
    Example board("trap-minimal");
    EXPECT_EQ(board.members(0, 5).substr(0, 5), "21333");
    EXPECT_EQ(board.chip(0).getAgeSeconds(), 300U);
}

TEST(ExampleBoardsTest, NamesStandBehindNumbers) {
    std::string const gateway = EXAMPLES_FOLDER "/home-gateway.xml";
    ChildProcess const summary = ChildProcess::runSwitchctl({"bring-up", gateway, "--simulate"});
    EXPECT_THAT(summary.out, HasSubstr("\n  switch 0 \"gateway\"  88e6096   found, 11 ports\n"));
    EXPECT_THAT(summary.out, HasSubstr("\n  cpu               forwarding 0.0 \"processor\"\n"));
    EXPECT_THAT(summary.out, HasSubstr("tag-based: 0.0 \"processor\"(validateTag/validateTag)"));
    EXPECT_THAT(summary.out, HasSubstr("\nCPU port: 0.0 \"processor\"\n"));
    ChildProcess const counters = ChildProcess::runSwitchctl({"statistics", gateway, "0.8", "--simulate"});
    EXPECT_THAT(counters.out, StartsWith("statistics of port 0.8 \"uplink\"\n"));
    for (std::vector<std::string> const& words :
         {std::vector<std::string>{"bring-up", gateway, "--simulate", "--json"},
          {"statistics", gateway, "0.8", "--simulate", "--json"},
          {"draw", gateway, "--json"}}) {
        EXPECT_THAT(ChildProcess::runSwitchctl(words).out, HasSubstr("\"label\": \"uplink\""));
    }
}

} // namespace
