#pragma once

#include <vector>

#include "switchctl/plan/PlannedWrite.hpp"

namespace switchctl::plan {

/// Two sequences of writes side by side, so that as many as possible of them are common to both, in
/// order. In a chip with staging registers, the same writes in another order do something else.
class WriteAlignment {
public:
    using Writes = std::vector<PlannedWrite>;

    /// A write that one sequence has and the other has not at that place.
    struct Lone {
        bool isInFirst;
        PlannedWrite write;
    };

    WriteAlignment(Writes const& first, Writes const& second);

    /// In order; where both have some, those of the first come first.
    std::vector<Lone> const& getLone() const { return _lone; }

private:
    std::vector<Lone> _lone;
};

} // namespace switchctl::plan
