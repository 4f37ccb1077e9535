#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace simulation {

/// A clock that moves only when something says so: a bus transfer, a sleep.
///
/// While a thread has adopted one, clock_gettime(CLOCK_MONOTONIC), time() and usleep() of that
/// thread are answered by it: usleep advances it and returns at once. May be shared by threads.
class VirtualClock {
public:
    /// The second that time() reports at construction: 2000-01-01 00:00:00 UTC on every run.
    static constexpr std::int64_t epochSeconds = 946'684'800;

    static constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

    VirtualClock();

    /// A clock that the destroying thread has adopted is put down first. No other thread may still
    /// live by it.
    ~VirtualClock();
    VirtualClock(VirtualClock const&) = delete;
    VirtualClock& operator=(VirtualClock const&) = delete;

    void advanceNanoseconds(std::uint64_t nanoseconds);

    /// Has `alarm` called, once, by the thread that first moves the clock to `nanoseconds` or past it,
    /// which goes on when the alarm returns. Alarms of the same time are called in the order of their
    /// setting. Those left over go with the clock.
    void callAt(std::uint64_t nanoseconds, std::function<void()> alarm);

    /// Nanoseconds since construction; also what CLOCK_MONOTONIC shows.
    std::uint64_t getNanoseconds() const;

    /// What time() shows: moves in step with getNanoseconds().
    std::int64_t getWallClockSeconds() const;

    /// How far the wall clock was into its second at construction, 0 (the start value) to
    /// 999999999 ns: time() changes first after 1 s minus this.
    void setWallClockPhase(std::uint64_t nanoseconds);

    /// Makes the calling thread live by `clock`; null puts it back on the system's time.
    static void adopt(VirtualClock* clock);

    /// The clock of the calling thread, or null.
    static VirtualClock* adopted();

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace simulation
