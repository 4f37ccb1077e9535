#pragma once

#include <functional>

#include "chips/PortCounters.hpp"
#include "switchctl/statistics/RateView.hpp"
#include "switchctl/terminal/WatchPace.hpp"

namespace switchctl::statistics {

/// Reads counters again and again and shows their rates.
class RateWatch {
public:
    /// \param sample reads the counters.
    /// \param view and `pace` must outlive the watch.
    RateWatch(std::function<chips::CounterSample()> sample, RateView& view, WatchPace& pace);

    /// Goes on until the pace says otherwise, or nobody takes what it shows.
    /// \param seconds between two readings.
    /// \param rounds how many rates are shown; 0 for no limit.
    /// \return the last sample.
    chips::CounterSample run(double seconds, unsigned rounds);

private:
    std::function<chips::CounterSample()> _sample;
    RateView& _view;
    WatchPace& _pace;
};

} // namespace switchctl::statistics
