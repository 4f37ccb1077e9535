#pragma once

#include "chips/CounterReader.hpp"

namespace chips {

/// Has the statistics unit of an 88E6096 capture a port's counters and hand them out. All that it writes is
/// the unit's operation register.
class MarvellCounterReader : public CounterReader {
public:
    MarvellCounterReader(ChipKind const& kind, ChipCatalogue const& catalogue, RegisterTransport& transport);

private:
    void capture(unsigned port) override;
    std::uint32_t readCaptured(unsigned number) override;
    void operate(unsigned operation, unsigned item);
    std::uint32_t wait();

    RegisterTransport& _transport;
    RegisterLocation _operation;
    RegisterLocation _high;
    RegisterLocation _low;
};

} // namespace chips
