#pragma once

#include <cstdint>
#include <optional>

#include "chips/RegisterAddress.hpp"

namespace chips {

/// An access to a register, as a trace has it.
struct TraceAccess {
    enum class Transport { smi, parallel, serial };

    /// When it was over, from the start of the trace.
    std::uint64_t nanoseconds = 0;
    unsigned switchId = 0;
    Transport transport = Transport::smi;
    bool isWrite = false;
    /// Nothing when the chip stayed busy, so that the access was never started: nobody on the bus can know
    /// what it was to be. Such an access has failed.
    std::optional<RegisterAddress> address;
    /// What was written or read; nothing for a read that failed.
    std::optional<std::uint32_t> value;
    bool succeeded = true;
};

} // namespace chips
