#pragma once

#include "switchctl/terminal/EndSignals.hpp"
#include "switchctl/terminal/WatchPace.hpp"

namespace switchctl {

/// The machine's time, and a watch that ends by SIGINT or SIGTERM. Construct it before other threads.
class RealPace : public WatchPace {
public:
    double getSeconds() override;
    bool wait(double seconds) override;

private:
    EndSignals _signals;
};

} // namespace switchctl
