#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/PortCounters.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

class ChipKind;

/// Reads the counters of a chip's ports over one of the library's transports, and clears none.
class CounterReader {
public:
    /// All must outlive the reader.
    CounterReader(ChipKind const& kind, ChipCatalogue const& catalogue, RegisterTransport& transport);
    virtual ~CounterReader() = default;
    CounterReader(CounterReader const&) = delete;
    CounterReader& operator=(CounterReader const&) = delete;

    /// Whether a chip of that kind answers; throws ToolError (registerFailed) when nothing does.
    bool isChipThere();

    /// Which counters are read; empty for all.
    using Choice = std::function<bool(Counter const& counter)>;

    /// What cannot be read is left out, with a line in `unread`. When the chip is gone, so is the rest.
    PortCounters read(PortAddress const& port, std::vector<std::string>& unread, Choice const& choice = {});

private:
    /// \name Of chips that have a statistics unit; both throw ToolError (registerFailed)
    /// @{
    virtual void capture(unsigned /*port*/) {}
    virtual std::uint32_t readCaptured(unsigned /*number*/) { return 0; }
    /// @}

    void readInto(PortCounters& counters, std::vector<std::string>& unread, Choice const& choice);
    std::uint64_t readCounter(Counter const& counter, unsigned port);
    std::uint64_t readPortRegisters(Counter const& counter, unsigned port);
    bool isChipLost();

    ChipKind const& _kind;
    ChipCatalogue const& _catalogue;
    RegisterTransport& _transport;
};

} // namespace chips
