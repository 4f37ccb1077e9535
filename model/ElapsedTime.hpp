#pragma once

#include <ctime>

/// The time from `start` to `end`, both from the same clock, with 0 <= tv_nsec < 1 second when the
/// arguments are normalised and `end` is not before `start`.
timespec elapsedTime(timespec start, timespec end);
