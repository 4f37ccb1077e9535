#pragma once

#include "simulation/88e6096/Atu.hpp"
#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/Statistics.hpp"
#include "simulation/88e6096/Vtu.hpp"

namespace simulation::marvell {

/// The first set of registers for the chip as a whole, and the units that take commands there.
class Global1 : public RegisterFile {
public:
    /// `context` must outlive the unit.
    explicit Global1(Context& context);

    Vtu& getVtu() { return _vtu; }
    Atu& getAtu() { return _atu; }
    Statistics& getStatistics() { return _statistics; }

private:
    RegisterTable table();
    Register vtuSidRegister() const;
    Register vtuDataRegister(unsigned index) const;
    std::uint32_t status(std::uint32_t stored) const;

    Context& _context;
    Vtu _vtu;
    Atu _atu;
    Statistics _statistics;
};

} // namespace simulation::marvell
