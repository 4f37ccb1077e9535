// The C library's clocks for threads that live by a VirtualClock. The dynamic linker prefers these
// definitions to the C library's, which stay in use for everything else.

#include <dlfcn.h>
#include <sys/syscall.h>
#include <time.h> // NOLINT: for what it declares outside of std
#include <unistd.h>

#include <cstdint>

#include "simulation/VirtualClock.hpp"

// A sanitizer's start-up may ask for the time before its own data is ready: nothing on the way to
// the real definitions may be instrumented or need initialising.
#define SIMULATION_UNINSTRUMENTED                                                                            \
    __attribute__((no_sanitize("address"), no_sanitize("thread"), no_sanitize("undefined")))

// Keeps this file in the executable even when nothing in it calls the clocks by name.
extern "C" char const simulationClockSeam = 0;

namespace {

constexpr std::uint64_t nanosecondsPerMicrosecond = 1'000;

__thread simulation::VirtualClock* adoptedClock = nullptr;

void* realClockGettime = nullptr;
void* realTime = nullptr;
void* realUsleep = nullptr;

SIMULATION_UNINSTRUMENTED void* nextDefinition(void*& cache, char const* name) {
    void* found = __atomic_load_n(&cache, __ATOMIC_ACQUIRE);
    if (found == nullptr) {
        found = dlsym(RTLD_NEXT, name);
        __atomic_store_n(&cache, found, __ATOMIC_RELEASE);
    }
    return found;
}

} // namespace

namespace simulation {

void VirtualClock::adopt(VirtualClock* clock) {
    adoptedClock = clock;
}

VirtualClock* VirtualClock::adopted() {
    return adoptedClock;
}

} // namespace simulation

extern "C" {

__attribute__((visibility("default"))) SIMULATION_UNINSTRUMENTED int clock_gettime(clockid_t id,
                                                                                   timespec* tp) noexcept {
    if (adoptedClock != nullptr && id == CLOCK_MONOTONIC) {
        std::uint64_t const now = adoptedClock->getNanoseconds();
        tp->tv_sec = static_cast<time_t>(now / simulation::VirtualClock::nanosecondsPerSecond);
        tp->tv_nsec = static_cast<long>(now % simulation::VirtualClock::nanosecondsPerSecond);
        return 0;
    }
    using Function = int (*)(clockid_t, timespec*);
    auto const real = reinterpret_cast<Function>(nextDefinition(realClockGettime, "clock_gettime"));
    return real != nullptr ? real(id, tp) : static_cast<int>(syscall(SYS_clock_gettime, id, tp));
}

__attribute__((visibility("default"))) SIMULATION_UNINSTRUMENTED time_t time(time_t* timer) noexcept {
    using Function = time_t (*)(time_t*);
    if (adoptedClock == nullptr) {
        auto const real = reinterpret_cast<Function>(nextDefinition(realTime, "time"));
        return real != nullptr ? real(timer) : time_t{-1};
    }
    auto const seconds = static_cast<time_t>(adoptedClock->getWallClockSeconds());
    if (timer != nullptr) {
        *timer = seconds;
    }
    return seconds;
}

__attribute__((visibility("default"))) SIMULATION_UNINSTRUMENTED int usleep(useconds_t useconds) {
    using Function = int (*)(useconds_t);
    if (adoptedClock == nullptr) {
        auto const real = reinterpret_cast<Function>(nextDefinition(realUsleep, "usleep"));
        return real != nullptr ? real(useconds) : -1;
    }
    adoptedClock->advanceNanoseconds(useconds * nanosecondsPerMicrosecond);
    return 0;
}

} // extern "C"
