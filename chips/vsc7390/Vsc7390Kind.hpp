#pragma once

#include "chips/ChipKind.hpp"

namespace chips {

/// The VSC7390: the parallel bus and the serial line, VLAN table and MAC table.
class Vsc7390Kind : public ChipKind {
public:
    Vsc7390Kind();

    std::unique_ptr<RegisterTransport> connect(Transport transport, Reach const& reach) const override;
    std::unique_ptr<PortStatusReader> makePortStatusReader(ChipCatalogue const& catalogue,
                                                           RegisterTransport& transport) const override;
    std::unique_ptr<TableReader> makeTableReader(ChipCatalogue const& catalogue,
                                                 RegisterTransport& transport) const override;
    void seed(simulation::SimulatedBoard& board, PortAddress const& port, Counter const& counter,
              std::uint64_t value) const override;
    std::unique_ptr<ChipTables> makeTables(ChipCatalogue const& catalogue) const override;
    void decode(unsigned switchId, TraceSink& sink, DecodedWindows& windows) const override;
    bool drives(ManagedSwitch const& managedSwitch) const override;
    Examination examine(Reach const& reach, ExaminationRequest const& request) const override;
    bool usePort(Reach const& reach, std::vector<unsigned> const& ports, unsigned port,
                 std::function<bool(ManagedSwitchPort&)> const& use) const override;
};

} // namespace chips
