#pragma once

#include <cstdint>

#include "simulation/AbsentUnit.hpp"
#include "simulation/BusDevice.hpp"
#include "simulation/UnitDirectory.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/System.hpp"

namespace simulation::vitesse {

/// The parallel interface: what the chip does with each access to its window.
///
/// A write, and a read of the blocks that answer at once, is one access over the bus. Any other read
/// only starts a fetch, and the data comes out of the system block later; in the access log that is
/// one read, made when it starts, and looking for the data leaves no trace.
class Bus : public BusDevice {
public:
    /// \param units of the chip, found by block and sub-block. All must outlive the interface.
    Bus(Context& context, System& system, UnitDirectory const& units);

    bool read(unsigned offset, unsigned& value) override;
    bool write(unsigned offset, unsigned value) override;

    std::uint64_t getBusNanoseconds() const { return _busNanoseconds; }

    /// \name Test side
    /// @{
    void failBusAccess(unsigned nth) { _busAccessesToFailure = nth; }
    void failRegisterAccess(unsigned nth) { _registerAccessesToFailure = nth; }
    void setPlugged(bool plugged) { _isPlugged = plugged; }
    void turnBytes() { _isTurned = true; }
    /// @}

private:
    struct Place {
        UnitPlace unit;
        unsigned address;
    };
    enum class Fate { normal, refused, lost };

    static Place placeOf(unsigned offset);
    static bool isPollOfFetch(Place const& place);
    bool passAccess();
    bool readWord(Place const& place, unsigned& value);
    std::uint32_t inOrder(std::uint32_t word) const;
    Fate startRegisterAccess();
    std::uint32_t pollFetch(unsigned address);
    std::uint32_t sample(Place const& place);
    void store(Place const& place, std::uint32_t value);
    AbsentUnit absentBlock(Place const& place) const;

    Context& _context;
    System& _system;
    UnitDirectory const& _units;
    std::uint64_t _busNanoseconds = 0;
    unsigned _busAccessesToFailure = 0;
    unsigned _registerAccessesToFailure = 0;
    bool _isPlugged = true;
    bool _isTurned = false;
};

} // namespace simulation::vitesse
