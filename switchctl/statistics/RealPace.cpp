#include "switchctl/statistics/RealPace.hpp"

#include <chrono>

#include "board/RealTime.hpp"

namespace switchctl::statistics {

double RealPace::getSeconds() {
    board::RealTime const realTime;
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool RealPace::wait(double seconds) {
    return !_signals.waitFor(seconds);
}

} // namespace switchctl::statistics
