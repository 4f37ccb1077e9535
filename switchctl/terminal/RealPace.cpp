#include "switchctl/terminal/RealPace.hpp"

#include <chrono>

#include "board/ClockAdoption.hpp"

namespace switchctl {

double RealPace::getSeconds() {
    board::ClockAdoption const realTime(nullptr);
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool RealPace::wait(double seconds) {
    return !_signals.waitFor(seconds);
}

} // namespace switchctl
