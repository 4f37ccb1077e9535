#pragma once

#include <cstdint>

namespace benchmarks {

/// A 32-bit access of the processor to a register.
struct Access {
    unsigned physicalAddress;
    bool isWrite;
    std::uint32_t value;

    bool operator==(Access const& other) const {
        return physicalAddress == other.physicalAddress && isWrite == other.isWrite && value == other.value;
    }
};

} // namespace benchmarks
