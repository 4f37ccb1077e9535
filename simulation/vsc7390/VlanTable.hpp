#pragma once

#include <array>
#include <cstdint>

#include "simulation/vsc7390/TableUnit.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// The VLAN table and the unit through which it is reached.
class VlanTable : public TableUnit {
public:
    using Entry = Vsc7390TestSide::VlanEntry;

    /// \param registers those of the analyser. Both must outlive the unit.
    VlanTable(Context& context, RegisterFile& registers);

    /// VIDs 0 to 4095.
    Entry getEntry(unsigned vid) const;
    void setEntry(unsigned vid, Entry const& entry);

    /// Whether the entry is as the clear command leaves it.
    bool isCleared(unsigned vid) const;

    void clear();

private:
    std::uint64_t usualNanoseconds(unsigned command) const override;
    void perform(unsigned command, std::uint32_t word) override;
    std::uint32_t clearedWord() const;

    /// Ports and flags where the access register has them.
    std::array<std::uint32_t, Vsc7390TestSide::numberOfVids> _entries;
};

} // namespace simulation::vitesse
