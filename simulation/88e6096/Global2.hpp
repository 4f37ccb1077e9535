#pragma once

#include <cstdint>
#include <deque>

#include "simulation/88e6096/CommandUnit.hpp"
#include "simulation/88e6096/Phy.hpp"
#include "simulation/88e6096/PointerTable.hpp"
#include "simulation/AbsentUnit.hpp"

namespace simulation::marvell {

/// The second set of registers for the chip as a whole, with the unit through which the PHYs are
/// reached.
class Global2 : public RegisterFile, public CommandUnit {
public:
    using Phys = std::deque<Phy>;

    /// Both references must outlive the unit.
    Global2(Context& context, Phys& phys);

    /// Bit n for port n.
    std::uint32_t getTrunkMask(unsigned hash) const { return _trunkMasks.get(hash); }
    std::uint32_t getTrunkMembers(unsigned trunk) const { return _trunkMembers.get(trunk); }

    /// The tables behind the registers, too.
    void resetAll();

private:
    RegisterTable table();
    void addTables(RegisterTable& table);
    void addCommands(RegisterTable& table);
    Register commandWithoutUnit(unsigned address, char const* name);
    void perform(std::uint32_t word) override;
    std::uint32_t readPhy(unsigned phy, unsigned address);
    void writePhy(unsigned phy, unsigned address, std::uint32_t value);
    AbsentUnit absentPhy(unsigned phy) const;

    Context& _context;
    Phys& _phys;
    PointerTable _devices;
    PointerTable _trunkMasks;
    PointerTable _trunkMembers;
    PointerTable _switchMac;
    PointerTable _priorities;
};

} // namespace simulation::marvell
