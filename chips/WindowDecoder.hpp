#pragma once

#include <cstdint>
#include <map>
#include <memory>

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

/// Makes register accesses of what a window on the processor's bus sees.
class WindowDecoder {
public:
    virtual ~WindowDecoder() = default;
    virtual void accessed(BusAccess const& access) = 0;

    /// Nothing more comes: a read that has not ended has failed.
    virtual void finish() = 0;
};

struct DecodedWindow {
    unsigned size = 0;
    std::unique_ptr<WindowDecoder> decoder;
};

/// By the physical address that they start at.
using DecodedWindows = std::map<unsigned, DecodedWindow>;

} // namespace chips
