#include "switchctl/statistics/RateWatch.hpp"

#include <utility>

namespace switchctl::statistics {

RateWatch::RateWatch(std::function<chips::CounterSample()> sample, RateDisplay& display, WatchPace& pace)
    : _sample(std::move(sample)), _display(display), _pace(pace) {}

chips::CounterSample RateWatch::run(double seconds, unsigned rounds) {
    double before = _pace.getSeconds();
    chips::CounterSample last = _sample();
    _display.begin(seconds);
    for (unsigned round = 1; (rounds == 0 || round <= rounds) && _display.isWritten() && _pace.wait(seconds);
         ++round) {
        double const now = _pace.getSeconds();
        chips::CounterSample next = _sample();
        _display.show(last, next, now - before);
        last = std::move(next);
        before = now;
    }
    return last;
}

} // namespace switchctl::statistics
