#pragma once

namespace switchctl {

/// The time between the rounds of a watch, and whether there is to be another.
class WatchPace {
public:
    virtual ~WatchPace() = default;

    /// Of a clock that only goes on.
    virtual double getSeconds() = 0;

    /// Returns once the time is over, or earlier when the watch is to end.
    /// \return whether it goes on.
    virtual bool wait(double seconds) = 0;
};

} // namespace switchctl
