#pragma once

#include <cstddef>

namespace footprint {

/// Finds out how deep a thread's stack became, by a pattern that is written below it first.
class PaintedStack {
public:
    /// Writes the pattern below the caller's frame. Call it on the thread in question.
    void paint();

    /// Bytes between the place of painting and the deepest one that was written since. Any thread may
    /// ask while the painted one exists.
    std::size_t depth() const;

private:
    unsigned char* _lowest = nullptr;
    unsigned char* _top = nullptr;
};

} // namespace footprint
