#pragma once

#include <poll.h>

#include <optional>
#include <vector>

/// The calls to the system that no device can be made to fail, for the thread that a test runs on. All
/// others, and all other threads, get the system.
struct SystemCalls {
    bool tcflushFails = false;
    bool tcsetattrFails = false;
    bool cfsetospeedFails = false;

    /// What poll(2) returns instead of waiting.
    std::optional<int> pollResult;

    /// What poll(2) was asked while it had a result to return: the number of entries, the first entry
    /// whether it is one of them or not, and the time-out.
    struct Poll {
        unsigned long entries;
        pollfd first;
        int timeout;
    };
    std::vector<Poll> polls;

    /// Of the calling thread; null between tests.
    static SystemCalls*& current();

    SystemCalls() { current() = this; }
    ~SystemCalls() { current() = nullptr; }
    SystemCalls(SystemCalls const&) = delete;
    SystemCalls& operator=(SystemCalls const&) = delete;
};
