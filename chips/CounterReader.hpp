#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/Counter.hpp"
#include "chips/PortAddress.hpp"
#include "chips/PortCounters.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

/// Reads the counters of a chip's ports over one of the library's transports, and clears none. All that
/// it writes is the operation register of an 88E6096's statistics unit, to capture and to read.
class CounterReader {
public:
    /// Both must outlive the reader.
    CounterReader(ChipCatalogue const& catalogue, RegisterTransport& transport);

    /// Whether a chip of that kind answers; throws CommandError (registerFailed) when nothing does.
    bool isChipThere();

    /// What cannot be read is left out, with a line in `unread`. When the chip is gone, so is the rest.
    PortCounters read(PortAddress const& port, std::vector<std::string>& unread);

private:
    void readInto(PortCounters& counters, std::vector<std::string>& unread);
    std::uint64_t readCounter(Counter const& counter, unsigned port);
    std::uint64_t readPortRegisters(Counter const& counter, unsigned port);
    std::uint32_t readCaptured(unsigned number);
    void capture(unsigned port);
    void operate(unsigned operation, unsigned pointer);
    std::uint32_t waitForUnit();
    std::uint32_t readAt(std::string const& unit, unsigned address);
    bool isChipLost();

    ChipCatalogue const& _catalogue;
    RegisterTransport& _transport;
};

} // namespace chips
