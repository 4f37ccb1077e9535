// The trace of a bring-up: what the library does on the buses, failures included.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "TracedSession.hpp"
#include "board/BoardSession.hpp"
#include "board/trace/TraceReader.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/AccessLog.hpp"

using board::BoardSession;
using board::TraceReader;
using simulation::AccessLog;
using simulation::BusFaults;
using simulation::SimulatedBoard;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// What the chips themselves have seen, without the registers of PHYs, which they reach by themselves.
std::vector<std::string> seenByChips(std::string const& document) {
    auto const xml = reference_host::XmlDocument::fromText(document, "board");
    board::BoardSession::Options options;
    options.simulate = true;
    board::BoardSession session(*xml, options);
    session.bringUp();
    std::vector<std::string> lines;
    for (AccessLog::Entry const& entry : session.getBoard()->getLog().getEntries()) {
        if (entry.unit.find("phy") == std::string::npos) {
            lines.push_back(entry.chip + (entry.kind == AccessLog::Kind::read ? " R " : " W ") +
                            std::to_string(entry.address) + " " + std::to_string(entry.value));
        }
    }
    return lines;
}

std::vector<std::string> tracedAccesses(std::string const& text) {
    std::istringstream in(text);
    board::TraceReader const trace(in, "trace");
    std::vector<std::string> lines;
    for (board::TraceReader::Line const& line : trace.getLines()) {
        EXPECT_TRUE(line.access.succeeded);
        lines.push_back("switch " + std::to_string(line.access.switchId) +
                        (line.access.isWrite ? " W " : " R ") + std::to_string(line.access.address->address) +
                        " " + std::to_string(line.access.value.value()));
    }
    return lines;
}

class TraceOfExampleTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST_P(TraceOfExampleTest, HasWhatTheChipsHaveSeen) {
    std::string const document = TracedSession::exampleText(GetParam());
    std::vector<std::string> const traced = tracedAccesses(TracedSession(document).getText());
    EXPECT_GT(traced.size(), 50U);
    EXPECT_EQ(traced, seenByChips(document));
}

INSTANTIATE_TEST_SUITE_P(Examples, TraceOfExampleTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));

TEST(BringUpTraceTest, BeginsWithVersionAndChips) {
    TracedSession const session(TracedSession::exampleText("trap-minimal"));
    EXPECT_THAT(session.getText(), StartsWith("switchctl trace 1\nchip 0 88e6096\n0."));
    EXPECT_THAT(session.getText(),
                ContainsRegex("\n0[.][0-9]{9} 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x098[0-9a-f] ok\n"));
}

TEST(BringUpTraceTest, HasAccessesThatTheBusFailed) {
    // A look at a ready bit may be refused without harm; anything else is an access that fails.
    TracedSession const clean(TracedSession::exampleText("trap-video-switch"));
    unsigned failures = 0;
    for (std::uint64_t access = 40; access < 60; ++access) {
        TracedSession const session(
            TracedSession::exampleText("trap-video-switch"),
            [&](SimulatedBoard& board) { board.getFaults().strike(access, BusFaults::Kind::accessFails); });
        if (session.getText().find(" failed\n") != std::string::npos) {
            ++failures;
        } else {
            EXPECT_EQ(session.getAccesses().size(), clean.getAccesses().size()) << access;
        }
    }
    EXPECT_GT(failures, 0U);
}

TEST(BringUpTraceTest, HasAWriteThatTheChipRefused) {
    TracedSession const session(TracedSession::exampleText("trap-video-switch"), [](SimulatedBoard& board) {
        board.getVitesse(board.getSwitchIds().front()).failAccess(2);
    });
    EXPECT_THAT(session.getText(), ContainsRegex(" failed\n"));
}

TEST(BringUpTraceTest, HasAccessesToAChipThatDoesNotAnswer) {
    TracedSession const session(TracedSession::exampleText("trap-minimal"),
                                [](SimulatedBoard& board) { board.getMarvell(0).unplug(); });
    EXPECT_THAT(session.getText(), ContainsRegex("\n[0-9.]+ 0 smi R - SMICommand 0xffff failed\n"));
    EXPECT_THAT(session.getText(), Not(HasSubstr(" ok\n")));
}

TEST(BringUpTraceTest, HasTheReadWhoseChipStaysBusy) {
    TracedSession const session(TracedSession::exampleText("trap-minimal"), [](SimulatedBoard& board) {
        board.getMarvell(0).hang(simulation::Marvell88E6096TestSide::CommandUnit::smi, 5);
    });
    EXPECT_THAT(session.getText(), HasSubstr(" failed\n"));
    EXPECT_THAT(session.getText(), HasSubstr(" ok\n"));
}
