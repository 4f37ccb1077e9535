#pragma once

#include <memory>
#include <ostream>

#include "board/OutputFile.hpp"
#include "board/trace/TraceChips.hpp"
#include "board/trace/TraceClock.hpp"
#include "board/trace/TraceWriter.hpp"
#include "chips/RegisterTransport.hpp"

namespace board {

/// The trace of single register accesses, over any transport.
class RegisterTrace {
public:
    /// Throws ToolError (noTrace) when the file cannot be written.
    /// \param model of the chip, as in configuration documents.
    /// \param switchId the chip's id in the trace.
    /// \param standardOutput gets the trace when the path is "-"; has to outlive it.
    RegisterTrace(std::string const& path, std::ostream& standardOutput, std::string const& model,
                  unsigned switchId, chips::TraceAccess::Transport transport);
    /// Keeps what there is of a trace that was not finished.
    ~RegisterTrace();
    RegisterTrace(RegisterTrace const&) = delete;
    RegisterTrace& operator=(RegisterTrace const&) = delete;

    /// Has the accesses of a transport written from now on; the trace must outlive it. An access throws
    /// ToolError (noTrace) when it cannot be written.
    void attach(chips::RegisterTransport& transport);

    /// The trace is complete. Call it once. Throws ToolError (noTrace).
    void finish();

private:
    void add(chips::RegisterLocation const& location, bool isWrite, std::uint32_t value, bool succeeded);

    OutputFile _file;
    bool _isFinished = false;
    unsigned _switchId;
    chips::TraceAccess::Transport _transport;
    TraceChips _chips;
    TraceClock _clock;
    std::unique_ptr<TraceWriter> _writer;
};

} // namespace board
