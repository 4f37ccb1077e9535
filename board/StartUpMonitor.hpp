#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

#include "reference_host/LogSink.hpp"

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

    /// The switches are ready. Called on the management thread.
    void reportPopulated();

    /// Looks for the two messages of an exception that ended start-up early: nothing else tells a host,
    /// which is only called back in the good case. The texts are those of SwitchManagementThread.cpp;
    /// wait() does not return when start-up fails and they read otherwise.
    void inspect(reference_host::LogMessage const& message);

    /// Waits until start-up has ended one way or the other.
    Outcome wait();

private:
    void finishEarly(std::string const& text, std::size_t position);
    void finish(bool populated, std::string reason);

    std::mutex _mutex;
    std::condition_variable _changed;
    bool _finished = false;
    Outcome _outcome;
};

} // namespace board
