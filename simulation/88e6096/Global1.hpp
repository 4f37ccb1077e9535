#pragma once

#include <functional>

#include "simulation/88e6096/Atu.hpp"
#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/Statistics.hpp"
#include "simulation/88e6096/Vtu.hpp"

namespace simulation::marvell {

/// The first set of registers for the chip as a whole, and the units that take commands there.
class Global1 : public RegisterFile {
public:
    /// \param context must outlive the unit.
    /// \param onReset brings the whole chip back to its reset values.
    Global1(Context& context, std::function<void()> onReset);

    /// The VTU, the STU and the ATU, too.
    void resetAll();

    Vtu& getVtu() { return _vtu; }
    Atu& getAtu() { return _atu; }
    Statistics& getStatistics() { return _statistics; }
    Vtu const& getVtu() const { return _vtu; }
    Atu const& getAtu() const { return _atu; }

private:
    RegisterTable table();
    static void addStorage(RegisterTable& table);
    std::uint32_t strap() const;
    void control(std::uint32_t word);
    void clearDone();
    Register vtuSidRegister() const;
    Register vtuDataRegister(unsigned index) const;
    std::uint32_t status(std::uint32_t stored) const;

    Context& _context;
    std::function<void()> _onReset;
    Vtu _vtu;
    Atu _atu;
    Statistics _statistics;
};

} // namespace simulation::marvell
