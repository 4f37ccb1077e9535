#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>

#include "board/BoardReading.hpp"
#include "board/trace/BusDecoder.hpp"
#include "board/trace/BusListener.hpp"
#include "board/trace/TraceChips.hpp"
#include "board/trace/TraceClock.hpp"
#include "chips/TraceSink.hpp"
#include "reference_host/PhysicalMemory.hpp"

namespace board {

/// Ends a start-up that goes round in circles: some waits of the library have no end, and a dead bus makes
/// them come. Progress is an access that has not been made before with the same outcome, or more different
/// accesses than any wait makes: a large board repeats what it did to other chips. The time is that of the
/// board, simulated or real.
///
/// The access that is one too many ends by a std::runtime_error, which the management thread survives and
/// takes for the end of start-up. Any thread may call.
class ProgressWatch : public BusListener, private chips::TraceSink {
public:
    /// \param limit seconds of board time without progress.
    ProgressWatch(BoardReading const& document, unsigned limit);

    /// Puts the watch in front of a session's memory, which must go before the watch does.
    std::unique_ptr<reference_host::PhysicalMemory>
    wrap(std::unique_ptr<reference_host::PhysicalMemory> memory);

    void accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) override;

    /// Start-up is over: from now on nothing is ended.
    void stop();

    /// What start-up was waiting for when it was ended, in words; empty when it was not.
    std::string getStall() const;

private:
    void add(chips::TraceAccess const& access) override;
    bool isStalled(unsigned physicalAddress, bool isWrite, std::uint32_t value);
    std::string describe(unsigned physicalAddress) const;

    TraceChips _chips;
    BusDecoder _decoder;
    TraceClock _clock;
    unsigned _limit;
    mutable std::mutex _mutex;
    bool _isStopped = false;
    /// Address, direction and value of each access that was made.
    std::unordered_set<std::uint64_t> _made;
    /// Of them the different ones since the last progress.
    std::unordered_set<std::uint64_t> _recent;
    std::uint64_t _lastProgress = 0;
    /// The last access to a register that ended.
    std::optional<chips::TraceAccess> _last;
    std::string _stall;
};

} // namespace board
