#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "simulation/CommandTimer.hpp"
#include "simulation/Services.hpp"
#include "simulation/UnitDirectory.hpp"

namespace simulation {

class ChipForwarding;

/// The side of a chip model that has no pins: what a test may look at and disturb. Nothing done
/// here shows in the access log.
///
/// An operation on a unit, port, table entry and so on that the chip does not have throws
/// std::out_of_range. Any thread may call; each operation is one step for the threads that use the board.
class ChipTestSide {
public:
    /// The parts of chips that take commands or their time.
    enum class CommandUnit {
        smi,
        smiPhy,
        vtu,
        atu,
        statistics,
        indirectRead,
        vlanTable,
        macTable,
        mii0,
        mii1,
        arbiter
    };

    virtual ~ChipTestSide() = default;

    /// \name Units with registers
    /// @{
    std::vector<RegisterFile*> const& getUnits() const;
    RegisterFile& getUnit(UnitKind kind, unsigned number = 0) const;
    /// By the name that the access log has, for example "port 3".
    RegisterFile& getUnit(std::string const& name) const;

    /// As the unit's own.
    std::uint32_t peek(std::string const& unit, unsigned address) const {
        return getUnit(unit).peek(address);
    }
    void poke(std::string const& unit, unsigned address, std::uint32_t value) const {
        getUnit(unit).poke(address, value);
    }
    void stick(std::string const& unit, unsigned address, std::uint32_t ones, std::uint32_t zeros) const {
        getUnit(unit).stick(address, ones, zeros);
    }
    /// @}

    /// How the chip forwards frames; null while its model has no forwarding. Owned by the chip.
    virtual ChipForwarding* getForwarding() { return nullptr; }

    /// \name Link: somebody is connected to the port, or nobody
    /// Without effect on a chip whose ports do not see it.
    /// @{

    /// \param megabits 10, 100 or 1000.
    virtual void plugLink(unsigned number, unsigned megabits = 100, bool fullDuplex = true);
    virtual void unplugLink(unsigned number);
    /// @}

    /// Makes one register access fail as the driver sees it. A chip behind a command register shows
    /// busy for so long before the access that a driver which waits a second gives up; it recovers by
    /// itself. On a memory bus the access is refused or lost, as the chip's options say; polls of a
    /// ready bit are part of the access they wait for.
    /// \param nth the access counted from now on, 1 = the next one; see AccessLog::Entry::transfer.
    ///        0 disarms.
    virtual void failAccess(unsigned nth) = 0;

    /// The chip leaves its socket, or comes back: reads then give what its bus does when it is idle, writes
    /// go nowhere. Without effect on a chip that has no socket.
    virtual void unplug() {}
    virtual void plug() {}

    /// Every command that is started from now on takes that long, whatever the options say.
    void setBusyTime(CommandUnit unit, std::uint64_t nanoseconds);

    /// The unit is busy for ever.
    /// \param nthCommand from which command on, 1 = the next one; 0 = from now on, command or not.
    void hang(CommandUnit unit, unsigned nthCommand = 0);

    /// Ends a hang; the unit is ready at once.
    void release(CommandUnit unit);

    /// Commands that the unit has started.
    unsigned getCommands(CommandUnit unit) const;

protected:
    using Timers = std::map<CommandUnit, CommandTimer*>;

    /// All must outlive the object.
    ChipTestSide(Services& services, UnitDirectory const& units, Timers timers);

    std::unique_lock<std::recursive_mutex> lock() const;
    CommandTimer& getTimer(CommandUnit unit) const;
    static void require(bool condition, char const* what);

private:
    Services& _services;
    UnitDirectory const& _units;
    Timers _timers;
};

} // namespace simulation
