#pragma once

#include <cstdint>
#include <mutex>

#include "board/trace/BusListener.hpp"
#include "board/trace/TraceChips.hpp"
#include "board/trace/TraceClock.hpp"
#include "chips/TraceSink.hpp"
#include "chips/WindowDecoder.hpp"

namespace board {

/// Makes register accesses of what goes over the processor's bus, whichever window it goes to.
///
/// Any thread may call it; one that lives by a simulated clock has its times.
class BusDecoder : public BusListener {
public:
    /// `sink` must outlive the decoder. Throws ToolError (badDocument) when tools do not know a chip.
    BusDecoder(TraceChips const& chips, chips::TraceSink& sink);

    void accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) override;

    /// Nothing more is decoded: reads that have not ended have failed.
    void finish();

private:
    std::mutex _mutex;
    TraceClock _clock;
    bool _isFinished = false;
    chips::DecodedWindows _windows;
};

} // namespace board
