#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

namespace board {

/// Knows how a switch manager's start-up went, so that a host neither waits for good nor looks too
/// early. The first of the two ends counts.
class StartUpMonitor {
public:
    struct Outcome {
        bool populated = false;
        /// Why not, in the words of whoever gave up; empty when populated.
        std::string reason;
    };

    /// As the switch manager tells it: `failure` is null when the switches are ready. Any thread.
    void reportEnd(char const* failure);

    /// Waits until start-up has ended one way or the other.
    Outcome wait();

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    bool _finished = false;
    Outcome _outcome;
};

} // namespace board
