#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>

#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/88e6096/Phy.hpp"

namespace simulation::marvell {

/// The second set of registers for the chip as a whole, with the unit through which the PHYs are
/// reached.
class Global2 {
public:
    using Phys = std::array<std::unique_ptr<Phy>, Marvell88E6096TestSide::numberOfPhys>;

    /// Both references must outlive the unit.
    Global2(Context& context, Phys& phys);
    Global2(Global2 const&) = delete;
    Global2& operator=(Global2 const&) = delete;

    RegisterFile& getRegisters();
    CommandTimer& getTimer();

private:
    RegisterTable table();
    void operate(std::uint32_t word);
    void read(unsigned phy, unsigned address);
    void write(unsigned phy, unsigned address);
    std::shared_ptr<UnitIdentity const> const& absentPhy(unsigned phy);

    Context& _context;
    Phys& _phys;
    CommandTimer _timer;
    RegisterFile _registers;
    std::map<unsigned, std::shared_ptr<UnitIdentity const>> _absentPhys;
};

} // namespace simulation::marvell
