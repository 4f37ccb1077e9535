#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/RegisterTable.hpp"

namespace simulation {

/// The side of a chip model that has no pins: what a test may look at and disturb. Nothing done
/// here shows in the access log.
///
/// Units go by the names of the access log. An operation on a unit that the chip does not have
/// throws std::out_of_range. Any thread may call.
class ChipTestSide {
public:
    virtual ~ChipTestSide() = default;

    /// Names of all units with registers.
    virtual std::vector<std::string> getUnits() const = 0;

    /// What is known of a unit's registers: names, fields, reset values. Lives as long as the chip.
    virtual RegisterTable const& getRegisters(std::string const& unit) const = 0;

    /// What a read over the bus would return now.
    virtual std::uint32_t peek(std::string const& unit, unsigned address) const = 0;

    /// Stores a value, read-only and reserved bits included, without starting anything.
    virtual void poke(std::string const& unit, unsigned address, std::uint32_t value) = 0;

    /// From now on the bits of `ones` read as 1 and those of `zeros` as 0, whatever is written.
    /// Two zero masks heal the register.
    virtual void stick(std::string const& unit, unsigned address, std::uint32_t ones,
                       std::uint32_t zeros) = 0;

    /// Makes one register access fail as the driver sees it. A chip behind a command register shows
    /// busy for so long before the access that a driver which waits a second gives up; it recovers by
    /// itself. On a memory bus the access is refused or lost, as the chip's options say; polls of a
    /// ready bit are part of the access they wait for.
    /// \param nth the access counted from now on, 1 = the next one; see AccessLog::Entry::transfer.
    ///        0 disarms.
    virtual void failAccess(unsigned nth) = 0;
};

} // namespace simulation
