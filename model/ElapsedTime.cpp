#include "model/ElapsedTime.hpp"

timespec elapsedTime(timespec start, timespec end) {
    constexpr long nanosecondsPerSecond = 1000000000L;
    timespec difference{};
    difference.tv_sec = end.tv_sec - start.tv_sec;
    difference.tv_nsec = end.tv_nsec - start.tv_nsec;
    if (difference.tv_nsec < 0) {
        difference.tv_sec -= 1;
        difference.tv_nsec += nanosecondsPerSecond;
    }
    return difference;
}
