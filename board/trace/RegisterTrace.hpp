#pragma once

#include <fstream>
#include <memory>

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
    RegisterTrace(std::string path, std::string const& model, unsigned switchId,
                  chips::TraceAccess::Transport transport);
    RegisterTrace(RegisterTrace const&) = delete;
    RegisterTrace& operator=(RegisterTrace const&) = delete;

    /// Has the accesses of a transport written from now on; the trace must outlive it. An access throws
    /// ToolError (noTrace) when it cannot be written.
    void attach(chips::RegisterTransport& transport);

private:
    void add(chips::RegisterLocation const& location, bool isWrite, std::uint32_t value, bool succeeded);
    void requireWritten();

    std::string _path;
    unsigned _switchId;
    chips::TraceAccess::Transport _transport;
    std::ofstream _out;
    TraceChips _chips;
    TraceClock _clock;
    std::unique_ptr<TraceWriter> _writer;
};

} // namespace board
