#pragma once

#include "chips/ChipKind.hpp"

namespace chips {

/// The 88E6096: MDIO, a statistics unit, VTU and STU.
class Marvell88E6096Kind : public ChipKind {
public:
    Marvell88E6096Kind();

    std::unique_ptr<RegisterTransport> connect(Transport transport, Reach const& reach) const override;
    std::unique_ptr<CounterReader> makeCounterReader(ChipCatalogue const& catalogue,
                                                     RegisterTransport& transport) const override;
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
