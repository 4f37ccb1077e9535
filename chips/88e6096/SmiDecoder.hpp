#pragma once

#include <cstdint>
#include <optional>

#include "chips/TraceSink.hpp"

namespace chips {

/// Makes register accesses of the MDIO frames to one 88E6096 in multi-chip mode: a command register that
/// shows busy, and a data register.
class SmiDecoder {
public:
    /// `sink` must outlive the decoder.
    SmiDecoder(unsigned switchId, chips::TraceSink& sink);

    /// A frame that was read or written. `registerNumber` is one of the chip's own two.
    void frameRead(std::uint64_t nanoseconds, unsigned registerNumber, std::uint16_t value, bool succeeded);
    void frameWritten(std::uint64_t nanoseconds, unsigned registerNumber, std::uint16_t value,
                      bool succeeded);

    /// Nothing more comes: a read that has not ended has failed.
    void finish();

private:
    void start(std::uint64_t nanoseconds, std::uint16_t word, bool succeeded);
    void look(std::uint64_t nanoseconds, std::uint16_t word, bool succeeded);
    void giveUp();
    void emit(std::uint64_t nanoseconds, bool isWrite, std::optional<RegisterAddress> const& address,
              std::optional<std::uint32_t> value, bool succeeded);

    unsigned _switchId;
    chips::TraceSink& _sink;
    std::uint16_t _data = 0;
    bool _isDataSent = true;
    /// The read that was started.
    std::optional<RegisterAddress> _read;
    bool _isReadSent = true;
    /// Since when the chip has been seen busy, and its last answer.
    std::optional<std::uint64_t> _busySince;
    std::uint64_t _lastLook = 0;
    std::uint16_t _lastWord = 0;
};

} // namespace chips
