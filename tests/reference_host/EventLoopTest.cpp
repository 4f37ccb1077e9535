#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/Event.hpp"
#include "host/Threads.hpp"
#include "tests/reference_host/ScriptedThread.hpp"

namespace {

TypeOfActiveObject const type("tested");

/// A thread that notes the ids of the events that it is given.
class EventLoopTest : public testing::Test {
protected:
    EventLoopTest() {
        thread.onEvent = [this](Event const* event) { delivered.push_back(event->getId()); };
    }

    Threads threads;
    std::vector<unsigned int> delivered;
    ScriptedThread thread{threads};
    Event one{thread, 3, type, 1, 0, "one"};
    Event two{thread, 3, type, 2, 0, "two"};
};

TEST_F(EventLoopTest, DeliversInPostingOrder) {
    one.post(0);
    two.post(0);
    one.post(0);
    thread.start(nullptr);
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1, 2, 1}));
}

TEST_F(EventLoopTest, DeliversTheVeryObjectOnTheThreadsOwnThread) {
    Event const* received = nullptr;
    std::thread::id receiver;
    std::promise<std::thread::id> runner;
    thread.onEvent = [&](Event const* event) {
        received = event;
        receiver = std::this_thread::get_id();
    };
    thread.body = [&](void*) {
        runner.set_value(std::this_thread::get_id());
        thread.processEvents();
    };
    thread.start(nullptr);
    one.post(0);
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(received, &one);
    EXPECT_EQ(receiver, runner.get_future().get());
}

TEST_F(EventLoopTest, WaitsForEventsWhileTheQueueIsEmpty) {
    std::promise<void> deliveredOne;
    thread.onEvent = [&](Event const* event) {
        delivered.push_back(event->getId());
        if (event == &one) {
            deliveredOne.set_value();
        }
    };
    thread.start(nullptr);
    one.post(0);
    deliveredOne.get_future().wait();
    EXPECT_EQ(thread.getState(), Thread::running);
    two.post(0);
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1, 2}));
}

TEST_F(EventLoopTest, ALoopEndedBeforeTheStartDeliversWhatIsQueued) {
    one.post(0);
    threads.endEventLoops();
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1}));
}

TEST_F(EventLoopTest, ALoopEndedBeforeItBeginsHearsTheThreadAnnounceItself) {
    thread.body = [this](void*) {
        one.post(0);
        thread.processEvents();
    };
    threads.endEventLoops();
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1}));
}

TEST_F(EventLoopTest, AnEndedLoopDeliversWhatWasQueuedAndTakesNoMore) {
    std::promise<void> handling;
    std::promise<void> mayGoOn;
    thread.onEvent = [&](Event const* event) {
        delivered.push_back(event->getId());
        if (delivered.size() == 1) {
            handling.set_value();
            mayGoOn.get_future().wait();
        }
    };
    thread.start(nullptr);
    one.post(0);
    handling.get_future().wait();
    two.post(0);
    threads.endEventLoops();
    one.post(0);
    mayGoOn.set_value();
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1, 2}));
}

TEST_F(EventLoopTest, AnEventThatPostsItselfCannotKeepAnEndedLoopAlive) {
    thread.onEvent = [&](Event const* event) {
        delivered.push_back(event->getId());
        threads.endEventLoops();
        one.post(0);
    };
    one.post(0);
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1}));
}

TEST_F(EventLoopTest, EndingAndPostingAfterTheEndAreAllowed) {
    thread.start(nullptr);
    threads.endEventLoops();
    thread.wait();
    threads.endEventLoops();
    one.post(0);
    EXPECT_EQ(thread.getState(), Thread::ended);
    EXPECT_TRUE(delivered.empty());
}

TEST_F(EventLoopTest, PostingToAThreadThatEndedWithoutALoopIsAllowed) {
    thread.body = [](void*) {};
    thread.start(nullptr);
    thread.wait();
    one.post(0);
    threads.endEventLoops();
    EXPECT_TRUE(delivered.empty());
}

TEST_F(EventLoopTest, ASecondLoopAfterTheEndReturnsAtOnce) {
    thread.body = [this](void*) {
        thread.processEvents();
        thread.processEvents();
    };
    one.post(0);
    thread.start(nullptr);
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1}));
}

TEST_F(EventLoopTest, AnExceptionLeavesTheLoopAndPassesThrough) {
    std::string caught;
    thread.onEvent = [this](Event const* event) {
        delivered.push_back(event->getId());
        throw std::logic_error("from the event");
    };
    thread.body = [&](void*) {
        try {
            thread.processEvents();
        } catch (std::logic_error const& error) {
            caught = error.what();
        }
    };
    one.post(0);
    two.post(0);
    thread.start(nullptr);
    thread.wait();
    EXPECT_EQ(caught, "from the event");
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1}));
}

TEST_F(EventLoopTest, ALoopBegunAgainAfterAnExceptionGoesOn) {
    thread.onEvent = [this](Event const* event) {
        delivered.push_back(event->getId());
        if (event == &one) {
            throw std::logic_error("from the event");
        }
    };
    thread.body = [this](void*) {
        EXPECT_THROW(thread.processEvents(), std::logic_error);
        thread.processEvents();
    };
    one.post(0);
    two.post(0);
    thread.start(nullptr);
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(delivered, (std::vector<unsigned int>{1, 2}));
}

TEST_F(EventLoopTest, ManyThreadsMayPostAtOnce) {
    constexpr int posters = 4;
    constexpr int postings = 500;
    thread.start(nullptr);
    std::vector<std::thread> others;
    for (int i = 0; i < posters; ++i) {
        others.emplace_back([this] {
            for (int k = 0; k < postings; ++k) {
                one.post(0);
            }
        });
    }
    for (std::thread& other : others) {
        other.join();
    }
    threads.endEventLoops();
    thread.wait();
    EXPECT_EQ(delivered.size(), static_cast<std::size_t>(posters) * postings);
}

TEST(EventLoopsTest, AllLoopsOfARegistryEndAndNoOthers) {
    Threads threads;
    Threads others;
    ScriptedThread first(threads);
    ScriptedThread second(threads);
    ScriptedThread other(others);
    std::promise<void> otherHeard;
    other.onEvent = [&otherHeard](Event const*) { otherHeard.set_value(); };
    Event event(other, 3, type, 1, 0, "event");
    first.start(nullptr);
    second.start(nullptr);
    other.start(nullptr);
    threads.endEventLoops();
    first.wait();
    second.wait();
    event.post(0);
    otherHeard.get_future().wait();
    EXPECT_EQ(other.getState(), Thread::running);
    others.endEventLoops();
}

TEST(EventLoopsTest, EndingRacesWithStarting) {
    for (int i = 0; i < 200; ++i) {
        Threads threads;
        ScriptedThread thread(threads);
        std::thread ender([&threads] { threads.endEventLoops(); });
        thread.start(nullptr);
        thread.wait();
        ender.join();
        ASSERT_EQ(thread.getState(), Thread::ended);
    }
}

TEST(EventLoopsTest, ARegistryForgetsAThreadThatIsGone) {
    Threads threads;
    for (int i = 0; i < 50; ++i) {
        auto thread = std::make_unique<ScriptedThread>(threads);
        auto second = std::make_unique<ScriptedThread>(threads);
        thread.reset();
        threads.endEventLoops();
        second->start(nullptr);
    }
    threads.endEventLoops();
}

} // namespace
