#include "board/BoardSession.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "model/ManagedSwitch.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/support/RecordingLog.hpp"

using board::BoardSession;
using board::StartUpMonitor;
using chips::PortAddress;
using reference_host::XmlDocument;

namespace {

char const* const twoSwitches = "<board><switches>"
                                "<switch id='0' switchModel='88e6096'>"
                                "<port id='0' connectedTo='cpu' portStatus='forwarding'/>"
                                "<port id='1' connectedTo='external' portStatus='forwarding'/></switch>"
                                "<switch id='5' switchModel='88e6096'>"
                                "<port id='3' connectedTo='external' portStatus='forwarding'/></switch>"
                                "</switches></board>";

board::BoardSession::Options simulated() {
    board::BoardSession::Options options;
    options.simulate = true;
    return options;
}

class BoardSessionTest : public testing::Test {
protected:
    std::unique_ptr<XmlDocument> document = XmlDocument::fromText(twoSwitches, "board.xml");
};

TEST_F(BoardSessionTest, BringsTheSwitchesUp) {
    board::BoardSession session(*document, simulated());
    board::StartUpMonitor::Outcome const outcome = session.bringUp();
    EXPECT_TRUE(outcome.populated) << outcome.reason;
    EXPECT_EQ(session.getManager().getManagedSwitchesCount(), 2U);
    EXPECT_EQ(session.getManager().getManagedSwitch(5)->getPorts().size(), 1U);
    EXPECT_TRUE(session.getLog().getComplaints().empty());
    EXPECT_EQ(session.getBoard()->getMisuse().getSize(), 0U);
}

TEST_F(BoardSessionTest, CountsTheEffortOfStartUpAlone) {
    board::BoardSession session(*document, simulated());
    session.bringUp();
    board::BoardSession::Effort const effort = session.getEffort();
    EXPECT_GT(effort.registerAccesses, 0U);
    EXPECT_EQ(effort.registerAccesses, session.getBoard()->getRegisterAccesses());
    EXPECT_GT(effort.busAccesses, effort.registerAccesses);
    EXPECT_GT(effort.busNanoseconds, 0U);
    EXPECT_GE(effort.elapsedNanoseconds, effort.busNanoseconds);
    std::ostringstream out;
    session.writeStatistics(chips::PortAddress{0, 1}, out);
    EXPECT_EQ(session.getEffort().registerAccesses, effort.registerAccesses);
    EXPECT_GT(session.getBoard()->getRegisterAccesses(), effort.registerAccesses);
}

TEST_F(BoardSessionTest, AChipThatDoesNotAnswerIsNotThere) {
    board::BoardSession::Options options = simulated();
    options.board.missingSwitches = {0};
    board::BoardSession session(*document, options);
    EXPECT_TRUE(session.bringUp().populated);
    EXPECT_EQ(session.getManager().getManagedSwitch(0), nullptr);
    EXPECT_NE(session.getManager().getManagedSwitch(5), nullptr);
}

TEST_F(BoardSessionTest, WithoutHardwareAccessEverySwitchIsThereAndNoChipIsTouched) {
    board::BoardSession::Options options = simulated();
    options.noHardwareAccess = true;
    options.board.missingSwitches = {0, 5};
    board::BoardSession session(*document, options);
    EXPECT_TRUE(session.bringUp().populated);
    EXPECT_EQ(session.getManager().getManagedSwitchesCount(), 2U);
    EXPECT_EQ(session.getBoard()->getBusAccesses(), 0U);
}

TEST_F(BoardSessionTest, WithoutHardwareAccessNoHardwareIsNeeded) {
    board::BoardSession::Options options;
    options.noHardwareAccess = true;
    options.memoryDevice = "/nonexistent/mem";
    board::BoardSession session(*document, options);
    EXPECT_TRUE(session.bringUp().populated);
    EXPECT_EQ(session.getManager().getManagedSwitchesCount(), 2U);
    EXPECT_EQ(session.getBoard(), nullptr);
    EXPECT_TRUE(session.getLog().getComplaints().empty());
}

TEST_F(BoardSessionTest, StartUpThatThrowsEndsTheWaitWithTheReason) {
    auto const duplicate = XmlDocument::fromText("<board><switches><switch id='0' switchModel='88e6096'/>"
                                                 "<switch id='0' switchModel='88e6096'/></switches></board>",
                                                 "board.xml");
    board::BoardSession session(*duplicate, simulated());
    board::StartUpMonitor::Outcome const outcome = session.bringUp();
    EXPECT_FALSE(outcome.populated);
    EXPECT_EQ(outcome.reason, "Roting xml or other catastrophic error");
}

TEST_F(BoardSessionTest, WritesTheCountersOfAPort) {
    board::BoardSession session(*document, simulated());
    session.bringUp();
    session.getBoard()->getMarvell(5).setCounter(3, 4, 0xABCD);
    std::ostringstream out;
    EXPECT_TRUE(session.writeStatistics(chips::PortAddress{5, 3}, out));
    EXPECT_NE(out.str().find("inUnicast\t\t0000abcd\t"), std::string::npos) << out.str();
    out << 10;
    EXPECT_EQ(out.str().substr(out.str().size() - 3), "\n10");
}

TEST_F(BoardSessionTest, ThereAreNoCountersWhereThereIsNoPort) {
    board::BoardSession session(*document, simulated());
    session.bringUp();
    std::ostringstream out;
    EXPECT_FALSE(session.writeStatistics(chips::PortAddress{0, 3}, out));
    EXPECT_FALSE(session.writeStatistics(chips::PortAddress{1, 0}, out));
    EXPECT_EQ(out.str(), "");
}

TEST_F(BoardSessionTest, CountersThatCannotBeReadAreNotWritten) {
    board::BoardSession session(*document, simulated());
    session.bringUp();
    session.getBoard()->getMarvell(0).hang(simulation::Marvell88E6096TestSide::CommandUnit::statistics);
    std::ostringstream out;
    EXPECT_FALSE(session.writeStatistics(chips::PortAddress{0, 1}, out));
    EXPECT_EQ(out.str(), "");
    ASSERT_EQ(session.getLog().getComplaints().size(), 1U);
    EXPECT_EQ(session.getLog().getComplaints()[0].text, "MarvellPort::statsCommand Stats Busy timeout\n");
}

TEST_F(BoardSessionTest, PassesMessagesOn) {
    test_support::RecordingLog log;
    board::BoardSession::Options options = simulated();
    options.log = &log;
    {
        board::BoardSession session(*document, options);
        session.bringUp();
    }
    test_support::Lines const lines = log.lines();
    EXPECT_THAT(lines, testing::Contains("info|SwitchManager::start()\n"));
    EXPECT_THAT(lines, testing::Contains("0|SwitchManager::configureTrunks\n"));
}

TEST_F(BoardSessionTest, PutsTheThreadBackOnTheSystemsTime) {
    {
        board::BoardSession const session(*document, simulated());
        EXPECT_NE(simulation::VirtualClock::adopted(), nullptr);
    }
    EXPECT_EQ(simulation::VirtualClock::adopted(), nullptr);
}

TEST_F(BoardSessionTest, ASessionThatIsNeverStartedGoesDown) {
    board::BoardSession const session(*document, simulated());
    EXPECT_EQ(session.getEffort().registerAccesses, 0U);
}

TEST_F(BoardSessionTest, SessionsSideBySideDoNotMeet) {
    auto const other = XmlDocument::fromText(twoSwitches, "other.xml");
    board::BoardSession::Options options = simulated();
    options.board.missingSwitches = {5};
    board::BoardSession first(*document, simulated());
    board::BoardSession second(*other, options);
    EXPECT_TRUE(first.bringUp().populated);
    EXPECT_TRUE(second.bringUp().populated);
    EXPECT_EQ(first.getManager().getManagedSwitchesCount(), 2U);
    EXPECT_EQ(second.getManager().getManagedSwitchesCount(), 1U);
    EXPECT_GT(first.getEffort().registerAccesses, second.getEffort().registerAccesses);
}

} // namespace
