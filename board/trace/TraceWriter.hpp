#pragma once

#include <mutex>
#include <ostream>

#include "board/trace/TraceChips.hpp"
#include "chips/TraceSink.hpp"

namespace board {

/// Writes a trace. Any thread may add to it.
class TraceWriter : public chips::TraceSink {
public:
    /// Writes the header. Both must outlive the writer.
    TraceWriter(std::ostream& out, TraceChips const& chips);

    /// An access to a chip that the header does not have is left out.
    void add(chips::TraceAccess const& access) override;

private:
    std::ostream& _out;
    TraceChips const& _chips;
    std::mutex _mutex;
};

} // namespace board
