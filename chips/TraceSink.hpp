#pragma once

#include "chips/TraceAccess.hpp"

namespace chips {

/// What gets the accesses of a trace, one after the other.
class TraceSink {
public:
    virtual ~TraceSink() = default;
    virtual void add(TraceAccess const& access) = 0;
};

} // namespace chips
