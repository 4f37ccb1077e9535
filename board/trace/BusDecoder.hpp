#pragma once

#include <cstdint>
#include <mutex>
#include <optional>

#include "board/trace/TraceChips.hpp"
#include "board/trace/TraceClock.hpp"
#include "chips/88e6096/MdioDecoder.hpp"
#include "chips/TraceSink.hpp"
#include "chips/vsc7390/ParallelDecoder.hpp"

namespace board {

/// Makes register accesses of what goes over the processor's bus, whichever window it goes to.
///
/// Any thread may call it; one that lives by a simulated clock has its times.
class BusDecoder {
public:
    /// `sink` must outlive the decoder.
    BusDecoder(TraceChips const& chips, chips::TraceSink& sink);

    void accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded);

    /// Nothing more comes: reads that have not ended have failed.
    void finish();

private:
    std::mutex _mutex;
    TraceClock _clock;
    chips::MdioDecoder _mdio;
    std::optional<chips::ParallelDecoder> _parallel;
};

} // namespace board
