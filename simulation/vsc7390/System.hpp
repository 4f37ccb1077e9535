#pragma once

#include <cstdint>
#include <functional>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// The registers for the chip as a whole, and the unit that fetches the registers which the bus
/// cannot wait for.
class System : public RegisterFile {
public:
    /// `context` must outlive the unit.
    /// \param resetChip called when a driver asks for a reset of the chip.
    System(Context& context, std::function<void()> resetChip);

    CommandTimer& getTimer() { return _timer; }

    /// An indirect read has started; what it is to return was sampled. It replaces one that is still
    /// on its way.
    void startFetch(std::uint32_t value);

    /// Whether the data of the last indirect read is there.
    bool isReady() const;

private:
    RegisterTable table();
    void globalReset(std::uint32_t value);
    std::uint32_t data() const;

    Context& _context;
    std::function<void()> _resetChip;
    CommandTimer _timer;
    std::uint32_t _fetched = 0;
    std::uint32_t _before = 0;
};

} // namespace simulation::vitesse
