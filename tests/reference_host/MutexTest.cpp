#include "host/Mutex.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "host/MutexLock.hpp"

namespace {

TEST(MutexTest, HasAName) {
    Mutex const mutex("ManagedSwitches");
    EXPECT_EQ(mutex.getName(), "ManagedSwitches");
}

TEST(MutexTest, TheHolderMayTakeItAgain) {
    Mutex mutex("recursive");
    int value = 0;
    {
        MutexLock const outer(mutex);
        MutexLock const inner(mutex);
        value = 1;
    }
    std::thread([&] {
        MutexLock const lock(mutex);
        ++value;
    }).join();
    EXPECT_EQ(value, 2);
}

TEST(MutexTest, IsHeldUntilTheLastLockGoes) {
    Mutex mutex("nested");
    std::atomic<bool> released{false};
    bool seenReleased = false;
    mutex.lock();
    mutex.lock();
    std::thread other([&] {
        MutexLock const lock(mutex);
        seenReleased = released;
    });
    mutex.unlock();
    released = true;
    mutex.unlock();
    other.join();
    EXPECT_TRUE(seenReleased);
}

TEST(MutexTest, ExcludesOtherThreads) {
    Mutex mutex("counter");
    int value = 0;
    auto count = [&] {
        for (int i = 0; i < 5000; ++i) {
            MutexLock const lock(mutex);
            ++value;
        }
    };
    std::thread first(count);
    std::thread second(count);
    first.join();
    second.join();
    EXPECT_EQ(value, 10000);
}

} // namespace
