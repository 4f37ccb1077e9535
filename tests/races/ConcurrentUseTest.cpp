// What a host may do with managers at the same time. What comes out is the same whoever is faster; the
// thread sanitizer sees whether it was luck.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <sstream>
#include <thread>

#include "model/ManagedSwitch.hpp"
#include "simulation/VirtualClock.hpp"
#include "tests/manager/Gate.hpp"
#include "tests/races/BoardHost.hpp"

using race_test::BoardHost;
using simulation::VirtualClock;

namespace {

/// Fewer in slow builds.
constexpr int rounds(int number) {
    return ORDERS == 0 ? number : (number + 9) / 10;
}

void reportRounds(int number) {
    testing::Test::RecordProperty("rounds", number);
    std::cout << "rounds: " << number << '\n';
}

/// Register accesses of a whole start-up.
/// \param example its name, or its document.
template <typename Example> std::uint64_t effortOf(Example const& example) {
    BoardHost host(example);
    Gate populated;
    host.start([&] { populated.open(); });
    host.report();
    populated.pass();
    return host.board().getRegisterAccesses();
}

TEST(ConcurrentUseTest, ManagersSideBySide) {
    std::vector<std::string> const examples = {"trap-minimal", "trap-access-point", "trap-video-switch",
                                               "trap-mixed"};
    std::vector<std::uint64_t> alone;
    std::vector<std::uint64_t> together(examples.size());
    for (std::string const& example : examples) {
        alone.push_back(effortOf(example));
    }
    for (int round = 0; round < rounds(10); ++round) {
        std::vector<std::thread> hosts;
        for (std::size_t i = 0; i < examples.size(); ++i) {
            hosts.emplace_back([&, i] { together[i] = effortOf(examples[i]); });
        }
        for (std::thread& host : hosts) {
            host.join();
        }
        EXPECT_EQ(together, alone);
    }
    reportRounds(rounds(10));
}

TEST(ConcurrentUseTest, ManagersShareADocument) {
    std::shared_ptr<reference_host::XmlDocument> const document =
        reference_host::XmlDocument::fromFile(EXAMPLES_FOLDER "/trap-mixed.xml");
    std::uint64_t const alone = effortOf(std::string("trap-mixed"));
    for (int round = 0; round < rounds(10); ++round) {
        std::vector<std::uint64_t> together(3);
        std::vector<std::thread> hosts;
        for (std::uint64_t& effort : together) {
            hosts.emplace_back([&] { effort = effortOf(document); });
        }
        for (std::thread& host : hosts) {
            host.join();
        }
        EXPECT_EQ(together, std::vector<std::uint64_t>(3, alone));
    }
    reportRounds(rounds(10));
}

TEST(ConcurrentUseTest, SwitchesAreCountedWhileTheyAreCreated) {
    for (int round = 0; round < rounds(20); ++round) {
        BoardHost host("trap-three-switches");
        std::atomic<bool> isPopulated{false};
        std::vector<unsigned> counts;
        std::thread counter([&] {
            while (!isPopulated) {
                counts.push_back(host.manager().getManagedSwitchesCount());
            }
            counts.push_back(host.manager().getManagedSwitchesCount());
        });
        host.start([&] { isPopulated = true; });
        host.report();
        counter.join();
        EXPECT_TRUE(std::is_sorted(counts.begin(), counts.end()));
        EXPECT_EQ(counts.back(), 3U);
    }
    reportRounds(rounds(20));
}

TEST(ConcurrentUseTest, SwitchesAreQueriedFromSeveralThreadsOnceTheyAreThere) {
    BoardHost host("trap-three-switches");
    Gate populated;
    host.start([&] { populated.open(); });
    host.report();
    populated.pass();
    std::vector<std::thread> threads;
    std::atomic<unsigned> found{0};
    for (unsigned id = 0; id < 3; ++id) {
        threads.emplace_back([&, id] {
            ManagedSwitch const* const managedSwitch = host.manager().getManagedSwitch(id);
            found += managedSwitch != nullptr && managedSwitch->getId() == id ? 1 : 0;
            found += host.manager().getManagedSwitches().size() == 3 ? 1 : 0;
            found += host.manager().getCpuPort() != nullptr ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, 9U);
}

TEST(ConcurrentUseTest, DiagnosticsAreCollectedWhileTheManagerDealsWithEvents) {
    BoardHost host("trap-minimal");
    Gate populated;
    host.start([&] { populated.open(); });
    host.report();
    populated.pass();
    std::string expected;
    std::atomic<bool> isOver{false};
    std::thread reporter([&] {
        while (!isOver) {
            host.report();
        }
    });
    VirtualClock::adopt(&host.board().getClock());
    for (int round = 0; round < rounds(20); ++round) {
        std::ostringstream table;
        EXPECT_TRUE(host.collectDiagnostics(0, 1, table));
        expected = expected.empty() ? table.str() : expected;
        EXPECT_EQ(table.str(), expected);
    }
    VirtualClock::adopt(nullptr);
    isOver = true;
    reporter.join();
    EXPECT_NE(expected, "");
    reportRounds(rounds(20));
}

TEST(ConcurrentUseTest, DiagnosticsOfOneBoardAreCollectedWhileAnotherOneStarts) {
    BoardHost host("trap-minimal");
    Gate populated;
    host.start([&] { populated.open(); });
    host.report();
    populated.pass();
    std::uint64_t const alone = effortOf(std::string("trap-mixed"));
    std::uint64_t together = 0;
    std::thread other([&] { together = effortOf(std::string("trap-mixed")); });
    VirtualClock::adopt(&host.board().getClock());
    std::ostringstream table;
    for (int round = 0; round < rounds(10); ++round) {
        EXPECT_TRUE(host.collectDiagnostics(0, 1, table));
    }
    VirtualClock::adopt(nullptr);
    other.join();
    EXPECT_EQ(together, alone);
}

TEST(ConcurrentUseTest, AManagerGoesRightAfterItsStart) {
    for (int round = 0; round < rounds(200); ++round) {
        BoardHost host("trap-minimal");
        host.start([] {});
    }
    reportRounds(rounds(200));
}

TEST(ConcurrentUseTest, AManagerGoesRightAfterItsStartAndAReport) {
    for (int round = 0; round < rounds(100); ++round) {
        std::atomic<int> populated{0};
        {
            BoardHost host("trap-minimal");
            std::thread reporter([&] { host.report(); });
            host.start([&] { ++populated; });
            reporter.join();
        }
        EXPECT_LE(populated, 1);
    }
    reportRounds(rounds(100));
}

TEST(ConcurrentUseTest, APopulatedCallbackAsksTheManagerAnything) {
    BoardHost host("trap-mixed");
    Gate done;
    unsigned count = 0;
    std::size_t size = 0;
    bool hasSwitch = false;
    bool hasCpuPort = false;
    std::ostringstream marvell;
    std::ostringstream vitesse;
    host.start([&] {
        count = host.manager().getManagedSwitchesCount();
        size = host.manager().getManagedSwitches().size();
        hasSwitch = host.manager().getManagedSwitch(3) != nullptr;
        hasCpuPort = host.manager().getCpuPort() != nullptr;
        EXPECT_EQ(host.manager().getCurrentState(), 3U);
        EXPECT_TRUE(host.collectDiagnostics(0, 1, marvell));
        EXPECT_TRUE(host.collectDiagnostics(3, 1, vitesse));
        host.report();
        done.open();
    });
    host.report();
    done.pass();
    EXPECT_EQ(count, 4U);
    EXPECT_EQ(size, 4U);
    EXPECT_TRUE(hasSwitch);
    EXPECT_TRUE(hasCpuPort);
    EXPECT_NE(marvell.str(), "");
    EXPECT_NE(vitesse.str(), "");
}

TEST(ConcurrentUseTest, APopulatedCallbackWaitsForAThreadThatQueries) {
    BoardHost host("trap-three-switches");
    Gate done;
    unsigned count = 0;
    bool hasSwitch = false;
    host.start([&] {
        std::thread asking([&] {
            count = host.manager().getManagedSwitchesCount();
            hasSwitch = host.manager().getManagedSwitch(2) != nullptr;
            host.report();
        });
        asking.join();
        done.open();
    });
    host.report();
    done.pass();
    EXPECT_EQ(count, 3U);
    EXPECT_TRUE(hasSwitch);
}

} // namespace
