#pragma once

#include <cstddef>
#include <vector>

#include "host/HardwareMapping.hpp"

namespace benchmarks {

/// Makes accesses in a plain loop: what a driver would execute that knew the answers beforehand. In a library
/// of its own, with nothing else in it, so that its instructions can be told from all others.
class Floor {
public:
    struct Step {
        HardwareMapping* section;
        unsigned offset;
        unsigned value;
        bool isWrite;
        bool isMacStatus;
    };

    /// Returns how many reads gave another value than the step has.
    static std::size_t run(std::vector<Step> const& steps);
};

} // namespace benchmarks
