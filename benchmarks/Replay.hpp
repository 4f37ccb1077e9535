#pragma once

#include <vector>

#include "benchmarks/Access.hpp"
#include "benchmarks/floor/Floor.hpp"
#include "host/MappedSection.hpp"

namespace benchmarks {

/// The registers that accesses on a list are made to.
class Replay {
public:
    /// \param log only says where the registers' sections get mapped.
    explicit Replay(SystemLogInterface& log);

    /// The sections in the steps belong to this object.
    std::vector<Floor::Step> prepare(std::vector<Access> const& accesses);

private:
    MappedSection _mac;
    MappedSection _parallelBus;
};

} // namespace benchmarks
