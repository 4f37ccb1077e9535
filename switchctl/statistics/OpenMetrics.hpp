#pragma once

#include <ostream>

#include "chips/PortCounters.hpp"

namespace switchctl::statistics {

/// A sample in OpenMetrics' text format: a family for each counter of the chips that are in it, a value for
/// each port whose counter could be read.
struct OpenMetrics {
    static void print(chips::CounterSample const& sample, std::ostream& out);
};

} // namespace switchctl::statistics
