#pragma once

#include <unistd.h>

#include <ctime>

#include "model/ElapsedTime.hpp"

/// Polling a chip until it is ready.
namespace polling {

/// What one poll found.
enum class Status {
    busy,
    ready,
    failed, ///< the poll itself did not work; going on makes no sense
};

constexpr Status busyIf(bool isBusy) {
    return isBusy ? Status::busy : Status::ready;
}

/// How polling ended.
enum class End { ready, failed, timedOut };

struct Outcome {
    End end;
    /// Whole seconds until the time-out; 0 when there was none.
    double elapsedSeconds;
};

/// The pause between two polls by the monotonic clock.
constexpr useconds_t pauseMicroseconds = 100;

/// Polls by the monotonic clock, with pauses. Only whole seconds count: this ends at the first poll that
/// finds the chip busy when that many seconds have passed.
///
/// \param poll a callable that returns a Status; called at least once.
template <typename Poll> Outcome untilReady(double timeoutSeconds, Poll poll) {
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    for (;;) {
        Status const status = poll();
        if (status != Status::busy) {
            return {status == Status::ready ? End::ready : End::failed, 0.0};
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

/// Polls by the calendar clock, whose seconds are whole, without pausing. On purpose, the time-out is
/// checked before the status: a chip that gets ready at the last poll is too late.
///
/// \param poll as for untilReady.
template <typename Poll> End untilReadyWithoutPause(double timeoutSeconds, Poll poll) {
    double elapsed = 0.0;
    time_t const start = time(nullptr);
    for (;;) {
        Status const status = poll();
        if (status == Status::failed) {
            return End::failed;
        }
        if (timeoutSeconds <= elapsed) {
            return End::timedOut;
        }
        elapsed = difftime(time(nullptr), start);
        if (status == Status::ready) {
            return End::ready;
        }
    }
}

/// Polls by the calendar clock without pausing until more than the given seconds have passed. A chip that
/// is found ready is never too late.
///
/// \param poll as for untilReady.
template <typename Poll> End untilReadyByCalendar(double timeoutSeconds, Poll poll) {
    time_t const start = time(nullptr);
    for (;;) {
        Status const status = poll();
        if (status != Status::busy) {
            return status == Status::ready ? End::ready : End::failed;
        }
        if (difftime(time(nullptr), start) > timeoutSeconds) {
            return End::timedOut;
        }
    }
}

} // namespace polling
