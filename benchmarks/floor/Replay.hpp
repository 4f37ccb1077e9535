#pragma once

#include <cstddef>
#include <vector>

#include "benchmarks/Access.hpp"
#include "host/MappedSection.hpp"

namespace benchmarks {

/// Makes listed accesses in a plain loop: what a driver would execute that knew the answers beforehand. In a
/// library of its own, so that its instructions can be told from all others.
class Replay {
public:
    /// \param log only says where the registers' sections get mapped.
    explicit Replay(SystemLogInterface& log);

    /// What is left to do for an access but to make it.
    struct Step {
        HardwareMapping* section;
        unsigned offset;
        unsigned value;
        bool isWrite;
        bool isMacStatus;
    };

    /// The sections belong to this object.
    std::vector<Step> prepare(std::vector<Access> const& accesses);

    /// Returns how many reads gave another value than the listed one.
    static std::size_t run(std::vector<Step> const& steps);

private:
    MappedSection _mac;
    MappedSection _parallelBus;
};

} // namespace benchmarks
