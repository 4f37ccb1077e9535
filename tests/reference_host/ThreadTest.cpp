#include "host/Thread.hpp"

#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers)

#include <atomic>
#include <future>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

#include "host/Threads.hpp"
#include "tests/reference_host/ScriptedThread.hpp"

namespace {

std::atomic<int> lastSignal{0};

void rememberSignal(int signal, siginfo*, void*) {
    lastSignal = signal;
}

TEST(ThreadTest, TellsItsName) {
    Threads threads;
    ScriptedThread const thread(threads, "management");
    EXPECT_EQ(thread.getName(), "management");
}

TEST(ThreadTest, ShowsTheSystemAsMuchOfItsNameAsFits) {
    Threads threads;
    ScriptedThread thread(threads, "SwitchManagementThread");
    char name[16] = "";
    thread.body = [&name](void*) { pthread_getname_np(pthread_self(), name, sizeof name); };
    thread.start(nullptr);
    thread.wait();
    EXPECT_STREQ(name, "SwitchManagemen");
}

TEST(ThreadTest, AnExceptionOfItsBodyEndsTheThreadAndNotTheProcess) {
    Threads threads;
    for (bool const isStandard : {true, false}) {
        ScriptedThread thread(threads, "management");
        thread.body = [isStandard](void*) {
            if (isStandard) {
                throw std::runtime_error("gave up");
            }
            throw 7; // NOLINT: some code throws anything
        };
        testing::internal::CaptureStderr();
        thread.start(nullptr);
        thread.wait();
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  isStandard ? "thread \"management\" has ended: gave up\n"
                             : "thread \"management\" has ended: unknown exception\n");
        EXPECT_EQ(thread.getState(), Thread::ended);
    }
}

TEST(ThreadTest, AnExceptionOfTheStartHookEndsTheThreadAndNotTheProcess) {
    Threads threads;
    threads.setStartHook([](Thread&) { throw std::runtime_error("no clock"); });
    ScriptedThread thread(threads, "management");
    testing::internal::CaptureStderr();
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "thread \"management\" has ended: no clock\n");
    EXPECT_EQ(thread.getState(), Thread::ended);
}

TEST(ThreadTest, RunsNothingBeforeItIsStarted) {
    Threads threads;
    ScriptedThread thread(threads);
    bool ran = false;
    thread.body = [&ran](void*) { ran = true; };
    EXPECT_EQ(thread.getState(), Thread::notStarted);
    thread.wait();
    EXPECT_FALSE(ran);
    EXPECT_EQ(thread.getState(), Thread::notStarted);
}

TEST(ThreadTest, RunningIsThree) {
    EXPECT_EQ(static_cast<unsigned int>(Thread::running), 3U);
}

TEST(ThreadTest, CallsRunWithTheArgumentOfStartOnAThreadOfItsOwn) {
    Threads threads;
    ScriptedThread thread(threads);
    int argument = 0;
    void* received = nullptr;
    std::thread::id runner;
    thread.body = [&](void* value) {
        received = value;
        runner = std::this_thread::get_id();
    };
    thread.start(&argument);
    thread.wait();
    EXPECT_EQ(received, &argument);
    EXPECT_NE(runner, std::this_thread::get_id());
}

TEST(ThreadTest, IsRunningFromStartUntilRunHasReturned) {
    Threads threads;
    ScriptedThread thread(threads);
    std::promise<void> mayEnd;
    thread.body = [&](void*) { mayEnd.get_future().wait(); };
    thread.start(nullptr);
    EXPECT_EQ(thread.getState(), Thread::running);
    mayEnd.set_value();
    thread.wait();
    EXPECT_EQ(thread.getState(), Thread::ended);
}

TEST(ThreadTest, IsRunningOnTheNewThreadFromTheFirstToTheLastStep) {
    Threads threads;
    std::vector<Thread::RunState> states;
    threads.setStartHook([&states](Thread& thread) { states.push_back(thread.getState()); });
    ScriptedThread thread(threads);
    thread.body = [&](void*) { states.push_back(thread.getState()); };
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(states, (std::vector<Thread::RunState>{Thread::running, Thread::running}));
}

// A thread that is over before its starter looks must not be made "running" by the starter.
TEST(ThreadTest, AThreadThatEndsAtOnceNeverGoesBackToRunning) {
    Threads threads;
    for (int i = 0; i < 200; ++i) {
        ScriptedThread thread(threads);
        thread.body = [](void*) {};
        thread.start(nullptr);
        thread.wait();
        ASSERT_EQ(thread.getState(), Thread::ended);
    }
}

TEST(ThreadTest, CanBeStartedOnlyOnce) {
    Threads threads;
    ScriptedThread thread(threads);
    std::atomic<int> runs{0};
    thread.body = [&runs](void*) { ++runs; };
    thread.start(nullptr);
    EXPECT_THROW(thread.start(nullptr), std::logic_error);
    thread.wait();
    EXPECT_THROW(thread.start(nullptr), std::logic_error);
    EXPECT_EQ(runs, 1);
}

TEST(ThreadTest, SeveralMayWaitForOneThread) {
    Threads threads;
    ScriptedThread thread(threads);
    std::promise<void> mayEnd;
    thread.body = [&](void*) { mayEnd.get_future().wait(); };
    thread.start(nullptr);
    auto wait = [&thread] {
        thread.wait();
        return thread.getState();
    };
    auto first = std::async(std::launch::async, wait);
    auto second = std::async(std::launch::async, wait);
    mayEnd.set_value();
    EXPECT_EQ(first.get(), Thread::ended);
    EXPECT_EQ(second.get(), Thread::ended);
    thread.wait();
}

TEST(ThreadTest, JoinsWhenItIsDestroyed) {
    // Only the base waits here: what run() touches outlives the object.
    class Bare : public Thread {
    public:
        Bare(Threads& threads, std::atomic<bool>& done) : Thread(threads, "bare"), _done(done) {}
        void* run(void*) override { return exitThread(); }
        void abort() override {}
        void processEvent(Event const*) override {}
        void* exitThread() override {
            _done = true;
            return nullptr;
        }

    private:
        std::atomic<bool>& _done;
    };
    Threads threads;
    std::atomic<bool> done{false};
    {
        Bare thread(threads, done);
        thread.start(nullptr);
        while (!done) {
            std::this_thread::yield();
        }
    }
    EXPECT_TRUE(done);
    threads.endEventLoops();
}

TEST(ThreadTest, TheBaseHasNothingToSayAtTheEnd) {
    Threads threads;
    ScriptedThread thread(threads);
    EXPECT_EQ(thread.exitThread(), nullptr);
}

TEST(ThreadTest, TheStartHookIsTheFirstThingOnEachNewThread) {
    Threads threads;
    std::mutex mutex;
    std::vector<std::string> steps;
    std::vector<std::thread::id> hookThreads;
    auto step = [&](std::string const& text) {
        std::lock_guard<std::mutex> const lock(mutex);
        steps.push_back(text);
        hookThreads.push_back(std::this_thread::get_id());
    };
    threads.setStartHook([&](Thread& started) { step("hook " + started.getName()); });
    for (char const* const name : {"first", "second"}) {
        ScriptedThread thread(threads, name);
        thread.body = [&](void*) { step("run"); };
        thread.start(nullptr);
        thread.wait();
    }
    EXPECT_EQ(steps, (std::vector<std::string>{"hook first", "run", "hook second", "run"}));
    EXPECT_EQ(hookThreads[0], hookThreads[1]);
    EXPECT_NE(hookThreads[0], std::this_thread::get_id());
}

TEST(ThreadTest, AHookThatIsTakenAwayIsNotCalled) {
    Threads threads;
    int calls = 0;
    threads.setStartHook([&calls](Thread&) { ++calls; });
    threads.setStartHook(nullptr);
    ScriptedThread thread(threads);
    thread.body = [](void*) {};
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(calls, 0);
}

TEST(ThreadTest, InstallsASignalHandler) {
    struct sigaction before {};
    ASSERT_EQ(sigaction(SIGUSR1, nullptr, &before), 0);
    Threads threads;
    ScriptedThread thread(threads);
    thread.addHandler(SIGUSR1, &rememberSignal);
    raise(SIGUSR1);
    EXPECT_EQ(lastSignal, SIGUSR1);
    sigaction(SIGUSR1, &before, nullptr);
}

TEST(ThreadTest, RefusesAHandlerThatTheSystemRefuses) {
    Threads threads;
    ScriptedThread thread(threads);
    EXPECT_THROW(thread.addHandler(SIGKILL, &rememberSignal), std::system_error);
}

} // namespace
