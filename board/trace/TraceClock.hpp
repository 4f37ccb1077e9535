#pragma once

#include <cstdint>

namespace board {

/// The time of a trace: since its start, on the clock that the calling thread lives by.
class TraceClock {
public:
    /// A simulated board's clock starts with the board; any other with the trace.
    TraceClock();

    std::uint64_t getNanoseconds() const;

private:
    static std::uint64_t now();

    std::uint64_t _start;
};

} // namespace board
