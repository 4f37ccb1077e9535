#include <algorithm>
#include <sstream>
#include <thread>

#include "model/ManagedSwitch.hpp"
#include "tests/manager/BoardRun.hpp"
#include "tests/manager/Gate.hpp"
#include "tests/manager/ManagerTest.hpp"

using reference_host::XmlDocument;
using simulation::SimulatedBoard;
using test_support::Lines;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

char const* const threeSwitches = EXAMPLES_FOLDER "/trap-three-switches.xml";
char const* const minimal = EXAMPLES_FOLDER "/trap-minimal.xml";

/// The positions of the lines that contain these texts, each searched behind the one before.
void expectInOrder(Lines const& lines, std::vector<std::string> const& texts) {
    auto position = lines.begin();
    for (std::string const& text : texts) {
        position = std::find_if(position, lines.end(), [&](std::string const& line) {
            return line.find(text) != std::string::npos;
        });
        ASSERT_NE(position, lines.end()) << "missing, or not in this order: " << text;
        ++position;
    }
}

TEST(StartUpTest, GoesThroughItsStepsInOrder) {
    BoardRun run(XmlDocument::fromFile(minimal));
    ASSERT_TRUE(run.bringUp().populated);
    expectInOrder(run.log.lines(), {"SwitchManager::initialisingAction",
                                    "SwitchManager::detectSwitches 1",
                                    "detectMarvellSwitches switch Id 0 product Number found 98",
                                    "createMarvellManagedSwitch 0",
                                    "SwitchManager::configureSwitchSettings\n",
                                    "setting switch 0 ATU Age Time to 300 seconds",
                                    "successfully set age time to 300 seconds",
                                    "SwitchManager::configureVlans 1",
                                    "ManagedSwitchPort(0.0)::configureVlans 1",
                                    "ManagedSwitchPort(0.9)::configureVlans 0",
                                    "SwitchManager::configureTrunks\n",
                                    "writeAggregationGroup Unimplemented",
                                    "addMulticastGroup. Adding multicastGroup 239.1.2.3",
                                    "Configuring MultiCastFilters for port1 Address 239.1.2.3 Vlan 5",
                                    "addPortToMulticastFilter Unimplemented",
                                    "SwitchManager::configurePorts\n",
                                    "Configuring Port 0 as cpuPortType",
                                    "Configuring Port 1 as ethernetPortType",
                                    "Configuring Port 8 as switchInterlink",
                                    "Configuring Port 9 as switchInterlink"});
    EXPECT_THAT(run.log.take("warning"), testing::IsEmpty());
    EXPECT_THAT(run.log.take("error"), testing::IsEmpty());
}

TEST(StartUpTest, IsTheSameOnEveryRun) {
    auto const trace = [] {
        BoardRun run(XmlDocument::fromFile(threeSwitches));
        EXPECT_TRUE(run.bringUp().populated);
        std::ostringstream text;
        run.board().getLog().print(text);
        return text.str();
    };
    std::string const first = trace();
    EXPECT_GT(first.size(), 10000U);
    EXPECT_EQ(trace(), first);
}

TEST(StartUpTest, MisusesNoChip) {
    for (char const* const board : {minimal, threeSwitches, EXAMPLES_FOLDER "/trap-access-point.xml"}) {
        BoardRun run(XmlDocument::fromFile(board));
        ASSERT_TRUE(run.bringUp().populated) << board;
        EXPECT_EQ(run.board().getMisuse().getSize(), 0U) << board;
    }
}

TEST(StartUpTest, BringsTheOthersUpWhenOneChipIsMissing) {
    SimulatedBoard::Options options;
    BoardRun whole(XmlDocument::fromFile(threeSwitches));
    ASSERT_TRUE(whole.bringUp().populated);
    std::vector<unsigned> const ids = whole.board().getSwitchIds();
    ASSERT_EQ(ids.size(), 3U);
    for (unsigned const missing : ids) {
        options.missingSwitches = {missing};
        BoardRun run(XmlDocument::fromFile(threeSwitches), options);
        EXPECT_TRUE(run.bringUp().populated);
        EXPECT_EQ(run.manager().getManagedSwitchesCount(), 2U);
        EXPECT_EQ(run.manager().getManagedSwitch(missing), nullptr);
        EXPECT_THAT(run.log.lines(), Contains(HasSubstr("unknown switch " + std::to_string(missing))));
    }
}

TEST(StartUpTest, AppliesTheAgeTimeOfTheDocument) {
    struct Row {
        char const* attribute;
        unsigned seconds;
    };
    // 88E6096 keeps 300 s from reset; the register counts in 15 s.
    for (Row const& row : {Row{"atuAgeTime='0'", 0}, Row{"atuAgeTime='300'", 300}, Row{"atuAgeTime='45'", 45},
                           Row{"atuAgeTime='65534'", 3825}, Row{"atuAgeTime='65535'", 300}, Row{"", 300},
                           Row{"atuAgeTime='70000'", 3825}, Row{"atuAgeTime='65551'", 15}}) {
        BoardRun run(std::string("<switches><switch id='2' switchModel='88e6096' ") + row.attribute +
                     "/></switches>");
        ASSERT_TRUE(run.bringUp().populated);
        EXPECT_EQ(run.board().getMarvell(2).getAgeSeconds(), row.seconds) << row.attribute;
    }
}

TEST(StartUpTest, ReportsAnAgeTimeThatIsCutToSixteenBits) {
    BoardRun run("<switches><switch id='2' switchModel='88e6096' atuAgeTime='70000'/></switches>");
    ASSERT_TRUE(run.bringUp().populated);
    EXPECT_THAT(
        run.log.take("info"),
        Contains(
            "info|SwitchManager::configureSwitchSettings setting switch 2 ATU Age Time to 4464 seconds\n"));
}

TEST(StartUpTest, DoesNotDependOnWhichSignalComesFirst) {
    std::string traces[2];
    for (int order = 0; order < 2; ++order) {
        auto document = XmlDocument::fromFile(minimal);
        board::BoardSession::Options options;
        options.simulate = true;
        board::BoardSession session(*document, options);
        SwitchManager& manager = session.getManager();
        Gate populated;
        std::vector<std::function<void()>> callbacks{[&] { populated.open(); }};
        if (order == 0) {
            manager.phyInterfacesHaveNowBeenSetup();
            manager.start(callbacks);
        } else {
            manager.start(callbacks);
            while (manager.getCurrentState() != 2) {
                std::this_thread::yield();
            }
            manager.phyInterfacesHaveNowBeenSetup();
        }
        populated.pass();
        std::ostringstream text;
        session.getBoard()->getLog().print(text);
        traces[order] = text.str();
    }
    EXPECT_EQ(traces[0], traces[1]);
    EXPECT_FALSE(traces[0].empty());
}

TEST(StartUpTest, TouchesNothingWithoutHardware) {
    auto document = XmlDocument::fromFile(threeSwitches);
    board::BoardSession::Options options;
    options.simulate = true;
    options.noHardwareAccess = true;
    board::BoardSession session(*document, options);
    ASSERT_TRUE(session.bringUp().populated);
    EXPECT_EQ(session.getManager().getManagedSwitchesCount(), 3U);
    EXPECT_EQ(session.getBoard()->getBusAccesses(), 0U);
}

/// Every register access of a bring-up in turn finds the chip busy for longer than anything waits; one in
/// seven where programs are slow.
TEST(StartUpTest, ComesToAnEndWhicheverAccessFails) {
#ifdef SLOW_BUILD
    constexpr unsigned step = 7;
#else
    constexpr unsigned step = 1;
#endif
    std::uint64_t accesses = 0;
    {
        BoardRun run(XmlDocument::fromFile(minimal));
        ASSERT_TRUE(run.bringUp().populated);
        simulation::AccessLog const& trace = run.board().getLog();
        accesses = trace.getEntry(trace.getSize() - 1).transfer;
    }
    ASSERT_GT(accesses, 50U);
    unsigned found = 0;
    unsigned runs = 0;
    for (unsigned failing = 1; failing <= accesses; failing += step, ++runs) {
        BoardRun run(XmlDocument::fromFile(minimal));
        run.board().getMarvell(0).failAccess(failing);
        ASSERT_TRUE(run.bringUp().populated) << failing;
        found += run.manager().getManagedSwitchesCount();
        Lines const lines = run.log.lines();
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](std::string const& line) {
            return line.find("Timeout waiting for SMI") != std::string::npos;
        })) << failing;
    }
    // Only the probe, the first of them, decides whether the switch is there.
    EXPECT_EQ(found, runs - 1);
}

} // namespace
