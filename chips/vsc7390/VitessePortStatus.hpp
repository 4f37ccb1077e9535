#pragma once

#include "chips/PortStatusReader.hpp"

namespace chips {

/// The ports of a VSC7390. Its MACs do not see links: that is asked of the PHYs behind them. It has no
/// register for a port's state, which is what the masks of the analyser make of it.
class VitessePortStatus : public PortStatusReader {
public:
    using PortStatusReader::PortStatusReader;

private:
    void readInto(unsigned port, PortStatus& status) override;
    bool isPhyAbsent(RegisterTransport& transport, ChipCatalogue const& catalogue) override;
    void readLink(unsigned port, PortStatus& status);
    void readMac(unsigned port, PortStatus& status);
    void readVlan(unsigned port, PortStatus& status);
};

} // namespace chips
