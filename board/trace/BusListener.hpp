#pragma once

#include <cstdint>

namespace board {

/// What hears of each 32-bit access to a board's windows once it is over, on the thread that made it.
class BusListener {
public:
    virtual ~BusListener() = default;
    virtual void accessed(unsigned physicalAddress, bool isWrite, std::uint32_t value, bool succeeded) = 0;
};

} // namespace board
