#pragma once

#include <fstream>
#include <memory>

#include "switchctl/registers/RegisterTransport.hpp"
#include "switchctl/registers/TransportOptions.hpp"
#include "switchctl/trace/TraceChips.hpp"
#include "switchctl/trace/TraceClock.hpp"
#include "switchctl/trace/TraceWriter.hpp"

namespace switchctl::trace {

/// The trace of single register accesses, over any transport.
class RegisterTrace {
public:
    /// Throws CommandError (noTrace) when the file cannot be written.
    /// \param options must outlive the trace. A chip without an id, which a VSC7390 is there, gets 0.
    explicit RegisterTrace(TransportOptions const& options);
    RegisterTrace(RegisterTrace const&) = delete;
    RegisterTrace& operator=(RegisterTrace const&) = delete;

    /// Has the accesses of a transport written from now on; the trace must outlive it. An access throws
    /// CommandError (noTrace) when it cannot be written.
    void attach(RegisterTransport& transport);

private:
    void add(RegisterLocation const& location, bool isWrite, std::uint32_t value, bool succeeded);
    void requireWritten();
    unsigned getSwitchId() const;

    TransportOptions const& _options;
    std::ofstream _out;
    TraceChips _chips;
    TraceClock _clock;
    std::unique_ptr<TraceWriter> _writer;
};

} // namespace switchctl::trace
