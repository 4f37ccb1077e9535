#pragma once

#include <array>
#include <cstdint>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// The VLAN table and the unit through which it is reached.
class VlanTable {
public:
    using Entry = Vsc7390TestSide::VlanEntry;

    /// \param registers those of the analyser. Both must outlive the unit.
    VlanTable(Context& context, RegisterFile& registers);

    /// The word that was written to the access register.
    void operate(std::uint32_t word);

    /// The access register as it reads: with the command, while one runs.
    std::uint32_t shown(std::uint32_t stored) const;

    CommandTimer& getTimer();

    /// VIDs 0 to 4095.
    Entry getEntry(unsigned vid) const;
    void setEntry(unsigned vid, Entry const& entry);

    /// Whether the entry is as the clear command leaves it.
    bool isCleared(unsigned vid) const;

private:
    void clear();
    std::uint32_t clearedWord() const;

    Context& _context;
    RegisterFile& _registers;
    CommandTimer _timer;
    unsigned _command = 0;
    /// Ports and flags where the access register has them.
    std::array<std::uint32_t, Vsc7390TestSide::numberOfVids> _entries;
};

} // namespace simulation::vitesse
