#pragma once

#include <optional>

#include "chips/TraceSink.hpp"
#include "chips/WindowDecoder.hpp"

namespace chips {

/// Makes register accesses of what a VSC7390's window sees: a read of most registers only starts, and its
/// data comes out of the system block when that says so.
class ParallelDecoder : public WindowDecoder {
public:
    /// `sink` must outlive the decoder.
    ParallelDecoder(unsigned switchId, chips::TraceSink& sink);

    void accessed(BusAccess const& access) override;
    void finish() override;

private:
    void read(BusAccess const& access, RegisterAddress const& address);
    bool isOfFetch(BusAccess const& access, RegisterAddress const& address);
    void fail();
    void emit(std::uint64_t nanoseconds, bool isWrite, RegisterAddress const& address,
              std::optional<std::uint32_t> value, bool succeeded);

    unsigned _switchId;
    chips::TraceSink& _sink;
    /// The read that has started, and when it was last seen.
    std::optional<RegisterAddress> _fetched;
    std::uint64_t _lastSeen = 0;
};

} // namespace chips
