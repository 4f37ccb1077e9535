#include "switchctl/statistics/RealPace.hpp"

#include <chrono>

#include "switchctl/registers/RealTime.hpp"

namespace switchctl::statistics {

double RealPace::getSeconds() {
    RealTime const realTime;
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool RealPace::wait(double seconds) {
    return !_signals.waitFor(seconds);
}

} // namespace switchctl::statistics
