#pragma once

#include <unistd.h>

#include <ctime>

#include "model/ElapsedTime.hpp"

/// Waiting for a chip by asking it again and again.
namespace polling {

/// What one look at the chip found.
enum class Look {
    busy,
    ready,
    failed, ///< the look itself did not work; waiting on makes no sense
};

/// How a wait ended.
enum class End { ready, failed, timedOut };

struct Outcome {
    End end;
    /// Whole seconds waited, at the last look.
    double elapsedSeconds;
};

/// The pause between two looks of a wait by the monotonic clock.
constexpr useconds_t pauseMicroseconds = 100;

/// Waits by the monotonic clock, with a pause between looks. Only whole seconds count: the wait ends
/// at the first look that finds the chip busy when that many seconds have passed.
///
/// \param look a callable that returns a Look; called at least once.
template <typename LookAtChip> Outcome untilReady(double timeoutSeconds, LookAtChip look) {
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    for (;;) {
        Look const found = look();
        if (found != Look::busy) {
            return {found == Look::ready ? End::ready : End::failed, 0.0};
        }
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        auto const elapsed = static_cast<double>(elapsedTime(start, now).tv_sec);
        if (elapsed >= timeoutSeconds) {
            return {End::timedOut, elapsed};
        }
        usleep(pauseMicroseconds);
    }
}

/// Waits by the calendar clock, whose seconds are whole, without pausing. The time-out is looked at
/// before the answer: a chip that gets ready at the very look at which the time is over is too late.
///
/// \param look as for untilReady.
template <typename LookAtChip> End untilReadyWithoutPause(double timeoutSeconds, LookAtChip look) {
    double elapsed = 0.0;
    time_t const start = time(nullptr);
    for (;;) {
        Look const found = look();
        if (found == Look::failed) {
            return End::failed;
        }
        if (timeoutSeconds <= elapsed) {
            return End::timedOut;
        }
        elapsed = difftime(time(nullptr), start);
        if (found == Look::ready) {
            return End::ready;
        }
    }
}

/// Waits by the calendar clock, whose seconds are whole, without pausing, until more than the given
/// seconds have passed. A chip that is found ready is never too late.
///
/// \param look as for untilReady.
template <typename LookAtChip> End untilReadyByCalendar(double timeoutSeconds, LookAtChip look) {
    time_t const start = time(nullptr);
    for (;;) {
        Look const found = look();
        if (found != Look::busy) {
            return found == Look::ready ? End::ready : End::failed;
        }
        if (difftime(time(nullptr), start) > timeoutSeconds) {
            return End::timedOut;
        }
    }
}

} // namespace polling
