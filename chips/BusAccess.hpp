#pragma once

#include <cstdint>

namespace chips {

/// A 32-bit access over the processor's bus.
struct BusAccess {
    /// When it was over, from the start of the trace.
    std::uint64_t nanoseconds;
    /// Bytes from the start of the chip's or controller's window.
    unsigned offset;
    bool isWrite;
    /// Of a read that failed, nothing that means anything.
    std::uint32_t value;
    bool succeeded;
};

} // namespace chips
