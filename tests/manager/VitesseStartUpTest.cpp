#include <algorithm>
#include <ctime>
#include <sstream>

#include "tests/manager/BoardRun.hpp"
#include "tests/manager/ManagerTest.hpp"

using reference_host::XmlDocument;
using simulation::SimulatedBoard;
using simulation::Vsc7390TestSide;
using test_support::Lines;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

char const* const mixed = EXAMPLES_FOLDER "/trap-mixed.xml";
char const* const videoSwitch = EXAMPLES_FOLDER "/trap-video-switch.xml";
constexpr unsigned vitesse = 3;

/// A bus so slow that a wait of seconds takes few polls.
SimulatedBoard::Options slowBus() {
    SimulatedBoard::Options options;
    options.vitesse.busAccessNanoseconds = 1'000'000;
    return options;
}

TEST(VitesseStartUpTest, BringsAVideoSwitchUpWithoutMisuse) {
    BoardRun run(XmlDocument::fromFile(videoSwitch));
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 1U);
    EXPECT_EQ(run.board().getMisuse().getSize(), 0U);
    EXPECT_THAT(run.log.take("error"), testing::IsEmpty());
    EXPECT_THAT(run.log.take("warning"), testing::IsEmpty());
}

TEST(VitesseStartUpTest, BringsFourChipsUpOnAMixedBoard) {
    BoardRun run(XmlDocument::fromFile(mixed));
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 4U);
    EXPECT_THAT(run.log.take("error"), testing::IsEmpty());
    // Closing the masks of 57 ports reaches past those of the chip: 0x99 to 0xB8, one write each.
    for (auto const& entry : run.board().getMisuse().getEntries()) {
        EXPECT_EQ(entry.unit, "analyser");
    }
}

TEST(VitesseStartUpTest, IsTheSameOnEveryRun) {
    auto const trace = [] {
        BoardRun run(XmlDocument::fromFile(mixed));
        EXPECT_TRUE(run.bringUp().populated);
        std::ostringstream text;
        run.board().getLog().print(text);
        return text.str();
    };
    std::string const first = trace();
    EXPECT_GT(first.size(), 10000U);
    EXPECT_EQ(trace(), first);
}

TEST(VitesseStartUpTest, GoesOnWithoutAChipThatIsNotOnTheBoard) {
    SimulatedBoard::Options options;
    options.missingSwitches = {vitesse};
    BoardRun run(XmlDocument::fromFile(mixed), options);
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 3U);
    EXPECT_EQ(run.manager().getManagedSwitch(vitesse), nullptr);
    EXPECT_THAT(run.log.lines(), Not(Contains(HasSubstr("vitesse switch product Number"))));
    EXPECT_THAT(run.log.take("error"),
                Contains("error|SwitchManager::addVlanPort. Attempt to add vlan to unknown switch 3\n"));
}

TEST(VitesseStartUpTest, GoesOnWithoutAChipThatDoesNotAnswer) {
    BoardRun run(XmlDocument::fromFile(mixed));
    run.board().getVitesse(vitesse).unplug();
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 3U);
}

TEST(VitesseStartUpTest, StopsAtAChipWhoseDataNeverGetReady) {
    BoardRun run(XmlDocument::fromFile(mixed), slowBus());
    run.board().getVitesse(vitesse).hang(Vsc7390TestSide::CommandUnit::indirectRead);
    board::StartUpMonitor::Outcome const outcome = run.bringUp();
    EXPECT_FALSE(outcome.populated);
    EXPECT_THAT(outcome.reason, HasSubstr("switch timed out after attempted to read a register 5 times."));
    EXPECT_THAT(
        run.log.take("error"),
        Contains("error|SwitchManagementThread::processEvent. Caught \"switch timed out after attempted to "
                 "read a register 5 times.\"\n"));
    // The Marvell switches were created before; nothing was configured, and the thread lives on.
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 3U);
    EXPECT_EQ(run.manager().getCurrentState(), 3U);
    EXPECT_THAT(run.log.lines(), Not(Contains(HasSubstr("configureSwitchSettings"))));
}

TEST(VitesseStartUpTest, WaitsForDataThatComeLate) {
    BoardRun run(XmlDocument::fromFile(videoSwitch), slowBus());
    run.board().getVitesse(2).loseReads(3);
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_EQ(run.manager().getManagedSwitchesCount(), 1U);
    EXPECT_THAT(run.log.take("error"), testing::IsEmpty());
}

TEST(VitesseStartUpTest, ReportsATableThatStaysBusyAndComesToAnEnd) {
    for (auto const unit :
         {Vsc7390TestSide::CommandUnit::vlanTable, Vsc7390TestSide::CommandUnit::macTable}) {
        BoardRun run(XmlDocument::fromFile(mixed), slowBus());
        run.board().getVitesse(vitesse).hang(unit);
        ASSERT_TRUE(run.bringUp().populated);
        EXPECT_EQ(run.manager().getManagedSwitchesCount(), 4U);
        EXPECT_THAT(run.log.lines(),
                    Contains(HasSubstr(unit == Vsc7390TestSide::CommandUnit::vlanTable
                                           ? "Timeout waiting for Vlan Table Busy Bit :Elapsed 1"
                                           : "Timeout waiting for Mac Table to be ready")));
    }
}

TEST(VitesseStartUpTest, WaitsForAnArbiterThatDrainsLate) {
    SimulatedBoard::Options options;
    options.vitesse.arbiterDrainNanoseconds = 50'000'000;
    BoardRun run(XmlDocument::fromFile(videoSwitch), options);
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_THAT(run.log.take("error"), testing::IsEmpty());
    // Each of the 21 ports that get a link setting is waited for.
    EXPECT_GE(run.session().getEffort().elapsedNanoseconds, 21U * 50'000'000U);
}

TEST(VitesseStartUpTest, DoesNotNeedThePhys) {
    BoardRun run(XmlDocument::fromFile(videoSwitch));
    for (unsigned phy = 0; phy < Vsc7390TestSide::numberOfPhys; ++phy) {
        run.board().getVitesse(2).unplugPhy(phy);
    }
    run.board().getVitesse(2).hang(Vsc7390TestSide::CommandUnit::mii1);
    ASSERT_TRUE(run.bringUp().populated);
}

TEST(VitesseStartUpTest, DiagnosticsSurviveAChipWhoseDataNeverGetReady) {
    BoardRun run(XmlDocument::fromFile(mixed), slowBus());
    ASSERT_TRUE(run.bringUp().populated);
    run.log.take();
    run.board().getVitesse(vitesse).hang(Vsc7390TestSide::CommandUnit::indirectRead);
    std::ostringstream out;
    timespec time{};
    std::string text;
    EXPECT_FALSE(run.manager().collectSwitchPortDiagnostics(vitesse, 1, out, time, text));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(run.log.take("error"),
              Lines{"error|SwitchManager::collectSwitchPortDiagnostics port 3.1 switch timed out "
                    "after attempted to read a register 5 times.\n"});
    run.board().getVitesse(vitesse).release(Vsc7390TestSide::CommandUnit::indirectRead);
    EXPECT_TRUE(run.manager().collectSwitchPortDiagnostics(vitesse, 1, out, time, text));
}

} // namespace
