#pragma once

#include <cstdint>

#include "simulation/VirtualClock.hpp"

namespace simulation {

/// How long a command unit shows busy, and the faults a test wants of it.
class CommandTimer {
public:
    /// `clock` must outlive the timer.
    explicit CommandTimer(VirtualClock const& clock, std::uint64_t busyNanoseconds = 0);

    /// A command starts now.
    void start();
    /// A command starts now that takes its own time, unless setBusyTime() was called.
    void start(std::uint64_t usualNanoseconds);
    bool isBusy() const;

    /// Whether a command has been started and has ended.
    bool isDone() const;

    /// Commands started so far.
    unsigned getCommands() const { return _commands; }

    void setBusyTime(std::uint64_t nanoseconds);

    /// Busy for ever: from the nth command on (1 = the next), or 0 = from now on.
    void hang(unsigned nthCommand);

    /// The next commands never end, as many as `count`; those after them do.
    void lose(unsigned count) { _commandsToLose = count; }

    /// Ends a hang, a loss and whatever runs.
    void release();

private:
    VirtualClock const& _clock;
    std::uint64_t _busyNanoseconds;
    bool _isTimeSet = false;
    std::uint64_t _busyUntil = 0;
    unsigned _commands = 0;
    unsigned _commandsToHang = 0;
    bool _hangs = false;
    unsigned _commandsToLose = 0;
    bool _isLost = false;
};

} // namespace simulation
