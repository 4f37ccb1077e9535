// The host's PHY report and the management thread's entry into its waiting state, with both threads held
// where it matters: at their looks at the manager's state.

#include <dlfcn.h>

#include <functional>
#include <thread>

#include "tests/manager/Gate.hpp"
#include "tests/manager/ManagerTest.hpp"

namespace {

/// What the calling thread does after each look at an active object's state.
thread_local std::function<void(unsigned int)>* lookHook = nullptr;

} // namespace

// This program's version of the host's operation, which the library meets instead of the host's own.
unsigned int ActiveObject::getCurrentState() const {
    using Operation = unsigned int (*)(ActiveObject const*);
    static auto const original =
        reinterpret_cast<Operation>(dlsym(RTLD_NEXT, "_ZNK12ActiveObject15getCurrentStateEv"));
    unsigned int const state = original(this);
    if (lookHook != nullptr) {
        (*lookHook)(state);
    }
    return state;
}

namespace {

/// A manager whose management thread is held at chosen looks at its state.
///
/// Entering its waiting state, that thread sees state 2 first when it names the action, before it looks
/// for a report, and a second time when it has found none and stays.
class PhyReportRaceTest : public testing::Test {
protected:
    PhyReportRaceTest() {
        application.getThreads().setStartHook([this](Thread&) { lookHook = &managementLook; });
    }

    ~PhyReportRaceTest() override { application.getThreads().endEventLoops(); }

    /// Starts the manager; its thread is held at its first look, in state 1.
    void startAndHold() {
        manager.start(callbacks);
        heldInStateOne.pass();
    }

    /// Reports, on this thread, with `afterFirstLook` done between the first look at the state and
    /// what the report makes of it.
    void report(std::function<void()> const& afterFirstLook = [] {}) {
        std::vector<unsigned int>& seen = reporterSaw;
        std::function<void(unsigned int)> look = [&](unsigned int state) {
            seen.push_back(state);
            if (seen.size() == 1) {
                afterFirstLook();
            }
        };
        lookHook = &look;
        manager.phyInterfacesHaveNowBeenSetup();
        lookHook = nullptr;
    }

    void expectOneStartUp() {
        populated.pass();
        while (manager.getCurrentState() != 4) {
            std::this_thread::yield();
        }
        application.getThreads().endEventLoops();
        int startUps = 0;
        for (std::string const& line : log.lines()) {
            startUps += line == "debug|SwitchManager::initialisingAction\n" ? 1 : 0;
        }
        EXPECT_EQ(startUps, 1);
    }

    Gate heldInStateOne;
    Gate letIntoStateTwo;
    Gate heldInStateTwo;
    Gate letLookForReport;
    Gate hasFoundNoReport;

    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    test_support::TestDocument document{"<switches/>"};
    Gate populated;
    std::vector<std::function<void()>> callbacks{[this] { populated.open(); }};
    std::vector<unsigned int> reporterSaw;

private:
    int _looks = 0;
    int _looksInStateTwo = 0;

    std::function<void(unsigned int)> managementLook = [this](unsigned int state) {
        if (++_looks == 1) {
            EXPECT_EQ(state, 1U);
            heldInStateOne.open();
            letIntoStateTwo.pass();
        }
        if (state == 2 && ++_looksInStateTwo == 1) {
            heldInStateTwo.open();
            letLookForReport.pass();
        } else if (state == 2) {
            hasFoundNoReport.open();
        }
    };

protected:
    TestManager manager{application, document, false, true};
};

TEST_F(PhyReportRaceTest, ReportThatSawStateOneButIsNotedAfterTheThreadHasLookedForIt) {
    startAndHold();
    report([this] {
        letIntoStateTwo.open();
        letLookForReport.open();
        hasFoundNoReport.pass();
    });
    EXPECT_EQ(reporterSaw, (std::vector<unsigned int>{1, 2}));
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ReportThatSawStateOneAndIsNotedJustBeforeTheThreadLooksForIt) {
    startAndHold();
    report([this] {
        letIntoStateTwo.open();
        heldInStateTwo.pass();
    });
    EXPECT_EQ(reporterSaw, (std::vector<unsigned int>{1, 2}));
    letLookForReport.open();
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ReportThatSeesTheNewStateBeforeTheThreadLooksForIt) {
    startAndHold();
    letIntoStateTwo.open();
    heldInStateTwo.pass();
    report();
    EXPECT_EQ(reporterSaw, std::vector<unsigned int>{2});
    letLookForReport.open();
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ReportThatIsOverBeforeTheThreadEnters) {
    startAndHold();
    report();
    EXPECT_EQ(reporterSaw, (std::vector<unsigned int>{1, 1}));
    letIntoStateTwo.open();
    letLookForReport.open();
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ReportThatComesWhenTheThreadHasFoundNone) {
    startAndHold();
    letIntoStateTwo.open();
    letLookForReport.open();
    hasFoundNoReport.pass();
    report();
    EXPECT_EQ(reporterSaw, std::vector<unsigned int>{2});
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ReportsThatRaceFreely) {
    letIntoStateTwo.open();
    letLookForReport.open();
    std::thread reporter([this] { manager.phyInterfacesHaveNowBeenSetup(); });
    manager.start(callbacks);
    reporter.join();
    expectOneStartUp();
}

TEST_F(PhyReportRaceTest, ASecondReportChangesNothing) {
    startAndHold();
    letIntoStateTwo.open();
    letLookForReport.open();
    hasFoundNoReport.pass();
    report();
    report();
    expectOneStartUp();
}

} // namespace
