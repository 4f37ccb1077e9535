#pragma once

#include <cstddef>
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
    struct Range {
        std::size_t begin;
        std::size_t end;
        std::size_t getSize() const { return end - begin; }
    };

    void align(Range first, Range second);
    void alignSingle(Range first, Range second);
    std::vector<std::size_t> commonFromFront(Range first, Range second) const;
    std::vector<std::size_t> commonFromBack(Range first, Range second) const;
    void addFirst(Range range);
    void addSecond(Range range);

    Writes const& _first;
    Writes const& _second;
    std::vector<Lone> _lone;
};

} // namespace switchctl::plan
