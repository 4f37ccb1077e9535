#include "switchctl/statistics/RateWatch.hpp"

#include <utility>

namespace switchctl::statistics {

RateWatch::RateWatch(std::function<chips::CounterSample()> sample, RateView& view, WatchPace& pace)
    : _sample(std::move(sample)), _view(view), _pace(pace) {}

chips::CounterSample RateWatch::run(double seconds, unsigned rounds) {
    double before = _pace.getSeconds();
    chips::CounterSample last = _sample();
    _view.begin(seconds);
    for (unsigned round = 1; (rounds == 0 || round <= rounds) && _view.isWritten() && _pace.wait(seconds);
         ++round) {
        double const now = _pace.getSeconds();
        chips::CounterSample next = _sample();
        _view.show(last, next, now - before);
        last = std::move(next);
        before = now;
    }
    return last;
}

} // namespace switchctl::statistics
