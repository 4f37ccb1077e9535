#pragma once

#include <memory>
#include <ostream>

#include "board/BoardReading.hpp"
#include "board/trace/BusDecoder.hpp"
#include "board/trace/TraceChips.hpp"
#include "board/trace/TraceWriter.hpp"
#include "reference_host/PhysicalMemory.hpp"

namespace board {

/// The trace of a board session: what goes over its buses, from when its memory is wrapped.
class BringUpTrace {
public:
    /// Writes the header. \param out must outlive the trace.
    BringUpTrace(std::ostream& out, BoardReading const& document);

    /// Puts the trace in front of the session's memory, which must go before the trace does.
    std::unique_ptr<reference_host::PhysicalMemory>
    wrap(std::unique_ptr<reference_host::PhysicalMemory> memory);

    /// Nothing more is traced.
    void finish();

private:
    TraceChips _chips;
    TraceWriter _writer;
    board::BusDecoder _decoder;
};

} // namespace board
