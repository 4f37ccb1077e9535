#include "switchctl/terminal/EndSignals.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>

#include "board/ClockAdoption.hpp"

namespace switchctl {

namespace {

using Nanoseconds = std::chrono::nanoseconds;

constexpr long long nanosecondsPerSecond = 1000000000;

Nanoseconds now() {
    board::ClockAdoption const realTime(nullptr);
    return std::chrono::steady_clock::now().time_since_epoch();
}

timespec timespecOf(Nanoseconds time) {
    timespec result{};
    result.tv_sec = static_cast<time_t>(time.count() / nanosecondsPerSecond);
    result.tv_nsec = static_cast<long>(time.count() % nanosecondsPerSecond);
    return result;
}

} // namespace

EndSignals::EndSignals() {
    sigemptyset(&_signals);
    sigaddset(&_signals, SIGINT);
    sigaddset(&_signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &_signals, &_before);
}

EndSignals::~EndSignals() {
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

void EndSignals::wait() const {
    int signal = 0;
    sigwait(&_signals, &signal);
}

bool EndSignals::waitFor(double seconds) const {
    Nanoseconds const end =
        now() + std::chrono::duration_cast<Nanoseconds>(std::chrono::duration<double>(seconds));
    while (true) {
        // Another signal ends the wait early.
        timespec const time = timespecOf(std::max(end - now(), Nanoseconds(0)));
        if (sigtimedwait(&_signals, nullptr, &time) > 0) {
            return true;
        }
        if (errno != EINTR) {
            return false;
        }
    }
}

} // namespace switchctl
