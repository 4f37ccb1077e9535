#pragma once

#include <memory>
#include <ostream>

#include "reference_host/PhysicalMemory.hpp"
#include "switchctl/BoardDocument.hpp"
#include "switchctl/trace/BusDecoder.hpp"
#include "switchctl/trace/TraceChips.hpp"
#include "switchctl/trace/TraceWriter.hpp"

namespace switchctl::trace {

/// The trace of a board session: what goes over its buses, from when its memory is wrapped.
class BringUpTrace {
public:
    /// Writes the header. \param out must outlive the trace.
    BringUpTrace(std::ostream& out, BoardDocument const& document);

    /// Puts the trace in front of the session's memory, which must go before the trace does.
    std::unique_ptr<reference_host::PhysicalMemory>
    wrap(std::unique_ptr<reference_host::PhysicalMemory> memory);

    /// Nothing more comes.
    void finish();

private:
    TraceChips _chips;
    TraceWriter _writer;
    BusDecoder _decoder;
};

} // namespace switchctl::trace
