#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Phy.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// One of the two controllers through which PHYs are reached.
class Mii {
public:
    using Phys = std::array<std::unique_ptr<Phy>, Vsc7390TestSide::numberOfPhys>;

    /// \param phys null for the controller that has none. It and `context` must outlive the unit.
    Mii(Context& context, unsigned number, Phys* phys);
    Mii(Mii const&) = delete;
    Mii& operator=(Mii const&) = delete;

    RegisterFile& getRegisters();
    CommandTimer& getTimer();

private:
    RegisterTable table();
    std::uint32_t status() const;
    std::uint32_t data();
    void operate(std::uint32_t word);
    std::uint32_t read(unsigned number, unsigned address);
    void write(unsigned number, unsigned address, std::uint32_t value);
    Phy* find(unsigned phy);
    std::shared_ptr<UnitIdentity const> const& absentPhy(unsigned phy);

    Context& _context;
    unsigned _number;
    Phys* _phys;
    CommandTimer _timer;
    bool _isWrite = false;
    /// What the transfer that runs will have read.
    std::optional<std::uint32_t> _arriving;
    std::map<unsigned, std::shared_ptr<UnitIdentity const>> _absentPhys;
    RegisterFile _registers;
};

} // namespace simulation::vitesse
