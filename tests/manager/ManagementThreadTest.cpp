#include <algorithm>
#include <stdexcept>
#include <thread>

#include "tests/manager/Gate.hpp"
#include "tests/manager/ManagerTest.hpp"

using test_support::Lines;
using testing::Contains;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

/// A manager on a thread of its own, without hardware.
class ManagementThreadTest : public ManagerTest {
protected:
    using Callbacks = std::vector<std::function<void()>>;

    /// Ends the loop and waits for the thread; the manager is gone afterwards.
    void finish() {
        application.getThreads().endEventLoops();
        manager.reset();
    }

    Gate populated;
    Callbacks callbacks{[this] { populated.open(); }};
};

TEST_F(ManagementThreadTest, StartsTheThreadThenEntersStateOne) {
    manage("<switches/>").start();
    finish();
    Lines const lines = takeLines();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0], "info|SwitchManager::start()\n");
    EXPECT_EQ(lines[1], "0|SwitchManager::startSwitchManagementThread\n");
}

TEST_F(ManagementThreadTest, AnnouncesItselfAndWaits) {
    manage("<switches/>").start();
    finish();
    Lines lines = takeLines();
    lines.erase(lines.begin(), lines.begin() + 2);
    auto const running = std::find_if(lines.begin(), lines.end(), [](std::string const& line) {
        return line.rfind("0|SwitchManagementThread::run [", 0) == 0;
    });
    ASSERT_NE(running, lines.end());
    EXPECT_THAT(*running, MatchesRegex("0\\|SwitchManagementThread::run \\[[0-9a-f]{8,}\\]\n"));
    EXPECT_EQ(*(running + 1), "info|SwitchManager::switchManagerThreadHasStarted()\n");
    EXPECT_THAT(lines, Contains("debug|SwitchManager::waitingForPhyInterfacesToBePopulatedAction\n"));
    EXPECT_THAT(lines, testing::Not(Contains("debug|SwitchManager::initialisingAction\n")));
}

TEST_F(ManagementThreadTest, ComesUpWhenTheReportComesBeforeTheStart) {
    manage("<switches/>");
    Callbacks phyCallbacks{[] {}};
    manager->phyInterfaceParsedCallbackfunctions(phyCallbacks);
    ASSERT_EQ(phyCallbacks.size(), 2U);
    phyCallbacks.back()();
    manager->start(callbacks);
    populated.pass();
    finish();
    EXPECT_EQ(takeLines("debug"), (Lines{
                                      "debug|SwitchManager::waitingForPhyInterfacesToBePopulatedAction\n",
                                      "debug|SwitchManager::initialisingAction\n",
                                  }));
}

TEST_F(ManagementThreadTest, ComesUpWhenTheReportComesWhileItWaits) {
    manage("<switches/>").start(callbacks);
    while (manager->getCurrentState() != 2) {
        std::this_thread::yield();
    }
    manager->phyInterfacesHaveNowBeenSetup();
    populated.pass();
    finish();
    EXPECT_THAT(takeLines(),
                Contains("3|SwitchManager::processEvent state change initialising->idleState\n").Times(1));
}

TEST_F(ManagementThreadTest, RunsTheCallbacksInOrderOnItsOwnThread) {
    manage("<switches/>").phyInterfacesHaveNowBeenSetup();
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    callbacks = {
        [&] {
            order.push_back(1);
            threads.push_back(std::this_thread::get_id());
        },
        [&] {
            order.push_back(2);
            threads.push_back(std::this_thread::get_id());
            populated.open();
        },
    };
    manager->start(callbacks);
    callbacks.clear(); // the manager has its own copy
    populated.pass();
    finish();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_EQ(threads[0], threads[1]);
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_F(ManagementThreadTest, CallbacksMayQueryTheManager) {
    manage("<switches><switch id='3' switchModel='88e6096'/></switches>").phyInterfacesHaveNowBeenSetup();
    unsigned int count = 0;
    ManagedSwitch const* found = nullptr;
    callbacks = {[&] {
        count = manager->getManagedSwitchesCount();
        found = manager->getManagedSwitch(3);
        populated.open();
    }};
    manager->start(callbacks);
    populated.pass();
    EXPECT_EQ(count, 1U);
    EXPECT_NE(found, nullptr);
    finish();
}

TEST_F(ManagementThreadTest, KeepsItsCallbacksForEveryIteration) {
    manage("<switches/>").phyInterfacesHaveNowBeenSetup();
    int runs = 0;
    callbacks = {[&] {
        ++runs;
        populated.open();
    }};
    manager->start(callbacks);
    populated.pass();
    application.getThreads().endEventLoops();
    manager->iterateManagedSwitchPopulatedCallbacks();
    finish();
    EXPECT_EQ(runs, 2);
}

TEST_F(ManagementThreadTest, AnEmptyListOfCallbacksCallsNothing) {
    manage("<switches/>").phyInterfacesHaveNowBeenSetup();
    Callbacks none;
    manager->start(none);
    while (manager->getCurrentState() != 4) {
        std::this_thread::yield();
    }
    finish();
    EXPECT_THAT(takeLines("error"), testing::IsEmpty());
}

TEST_F(ManagementThreadTest, GoesOnAfterARuntimeError) {
    manage("<switches><switch id='1' switchModel='88e6096'/><x><switch id='1'/></x></switches>")
        .phyInterfacesHaveNowBeenSetup();
    manager->start(callbacks);
    while (takeLines("error").empty()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(manager->getCurrentState(), 3U);
    EXPECT_EQ(manager->getManagedSwitchesCount(), 0U);
    // The loop still delivers: a second report is looked at, and changes nothing in state 3.
    deliverPhyInterfacesPopulated();
    EXPECT_EQ(manager->getCurrentState(), 3U);
    finish();
}

TEST_F(ManagementThreadTest, NamesTheRuntimeErrorThatItCaught) {
    manage("<switches/>").phyInterfacesHaveNowBeenSetup();
    callbacks = {[] { throw std::runtime_error("from a callback"); }};
    manager->start(callbacks);
    Lines errors;
    while (errors.empty()) {
        errors = takeLines("error");
        std::this_thread::yield();
    }
    EXPECT_EQ(errors, Lines{"error|SwitchManagementThread::processEvent. Caught \"from a callback\"\n"});
    finish();
}

TEST_F(ManagementThreadTest, EndsAfterAnyOtherException) {
    manage("<switches/>").phyInterfacesHaveNowBeenSetup();
    callbacks = {[] { throw std::logic_error("not a runtime error"); }};
    manager->start(callbacks);
    // Nobody ends the loop: the thread ends by itself, so this does not wait for good.
    manager.reset();
    Lines const lines = takeLines();
    EXPECT_THAT(lines, Contains(MatchesRegex(
                           "0\\|SwitchManagementThread::run \\[[0-9a-f]{8,}\\] caught not a runtime "
                           "error\n")));
    EXPECT_THAT(lines, testing::Not(Contains(HasSubstr("SwitchManagementThread::processEvent. Caught"))));
}

TEST_F(ManagementThreadTest, PassesWhatCallbacksThrowAsItIs) {
    static char const* const text = "from a callback";
    callbacks = {[] { throw text; }};
    manage("<switches/>").start(callbacks);
    application.getThreads().endEventLoops();
    try {
        manager->initialisingAction(nullptr);
        FAIL() << "nothing was thrown";
    } catch (char const* thrown) {
        EXPECT_EQ(thrown, text);
    } catch (std::exception const& exception) {
        FAIL() << "the text became an exception: " << exception.what();
    }
    finish();
}

TEST_F(ManagementThreadTest, NotesAnAbortAndRunsOn) {
    manage("<switches/>");
    SwitchManagementThread thread(*manager);
    thread.abort();
    EXPECT_EQ(takeLines(), Lines{"info|SwitchManagementThread::abort()\n"});
    EXPECT_EQ(thread.getName(), "SwitchManagementThread");
    EXPECT_EQ(thread.getState(), Thread::notStarted);
}

TEST_F(ManagementThreadTest, IsDestroyedRightAfterTheStart) {
    log.threads = &application.getThreads();
    for (int round = 0; round < 50; ++round) {
        manage("<switches/>").phyInterfacesHaveNowBeenSetup();
        manager->start();
        manager.reset();
        EXPECT_THAT(takeLines("2"),
                    Contains("2|SwitchManager::~SwitchManager waiting for _switchManagementThread \n"));
    }
}

} // namespace
