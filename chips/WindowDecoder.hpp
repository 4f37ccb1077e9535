#pragma once

#include <map>
#include <memory>

#include "chips/BusAccess.hpp"

namespace chips {

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
