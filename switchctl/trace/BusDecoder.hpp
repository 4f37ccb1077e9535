#pragma once

#include <cstdint>
#include <mutex>
#include <optional>

#include "switchctl/trace/MdioDecoder.hpp"
#include "switchctl/trace/ParallelDecoder.hpp"
#include "switchctl/trace/TraceChips.hpp"
#include "switchctl/trace/TraceClock.hpp"
#include "switchctl/trace/TraceSink.hpp"

namespace switchctl::trace {

/// Makes register accesses of what goes over the processor's bus, whichever window it goes to.
///
/// Any thread may call it; one that lives by a simulated clock has its times.
class BusDecoder {
public:
    /// `sink` must outlive the decoder.
    BusDecoder(TraceChips const& chips, TraceSink& sink);

    void accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded);

    /// Nothing more comes: reads that have not ended have failed.
    void finish();

private:
    std::mutex _mutex;
    TraceClock _clock;
    MdioDecoder _mdio;
    std::optional<ParallelDecoder> _parallel;
};

} // namespace switchctl::trace
