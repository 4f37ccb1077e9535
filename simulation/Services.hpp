#pragma once

#include <mutex>

#include "simulation/AccessLog.hpp"
#include "simulation/MisuseReport.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation {

/// What all models of one board share.
struct Services {
    VirtualClock clock;
    AccessLog log{clock};
    MisuseReport misuse{clock, log};

    /// Held during each bus access and each operation of a test side, so that a bus access is one
    /// step for every thread.
    mutable std::recursive_mutex mutex;
};

} // namespace simulation
