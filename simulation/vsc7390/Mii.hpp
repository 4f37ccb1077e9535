#pragma once

#include <cstdint>
#include <deque>
#include <optional>

#include "simulation/AbsentUnit.hpp"
#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Phy.hpp"

namespace simulation::vitesse {

/// One of the two controllers through which PHYs are reached.
class Mii : public RegisterFile {
public:
    using Phys = std::deque<Phy>;

    /// \param phys null for the controller that has none. It and `context` must outlive the unit.
    Mii(Context& context, unsigned number, Phys* phys);

    CommandTimer& getTimer() { return _timer; }

    /// Ends a transfer without its data, as a reset does.
    void forget();

private:
    RegisterTable table();
    std::uint32_t status() const;
    std::uint32_t data();
    void operate(std::uint32_t word);
    std::uint32_t readPhy(unsigned number, unsigned address);
    void writePhy(unsigned number, unsigned address, std::uint32_t value);
    Phy* find(unsigned number);
    AbsentUnit absentPhy(unsigned number) const;

    Context& _context;
    Phys* _phys;
    CommandTimer _timer;
    bool _isWrite = false;
    /// What the transfer that runs will have read.
    std::optional<std::uint32_t> _arriving;
};

} // namespace simulation::vitesse
