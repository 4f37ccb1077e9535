#pragma once

#include "chips/PortStatusReader.hpp"

namespace chips {

/// The ports of an 88E6096: what its port registers say. Ports 8 to 10 have no PHY in the chip.
class MarvellPortStatus : public PortStatusReader {
public:
    using PortStatusReader::PortStatusReader;

private:
    void readInto(unsigned port, PortStatus& status) override;
    void readLink(unsigned port, PortStatus& status);
    void readSettings(unsigned port, PortStatus& status);
};

} // namespace chips
