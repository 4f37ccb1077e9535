#pragma once

#include <cstdint>
#include <string>

#include "simulation/88e6096/Marvell88E6096Options.hpp"
#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/Services.hpp"

namespace simulation::marvell {

/// What the units of one chip share.
struct Context {
    Services& services;
    std::string chip;
    Marvell88E6096Options options;
    /// The SMI command that is being carried out, counted from 1.
    unsigned transfer = 0;
};

/// Begins the command that was written to a register whose bit 15 starts commands: reports it when
/// the unit is busy, and leaves the register with the bit clear.
/// \return false when the word starts nothing.
bool startCommand(RegisterFile& registers, unsigned address, std::uint32_t word, CommandTimer& timer);

/// A command register as it reads, with the busy bit of its unit.
std::uint32_t withBusy(std::uint32_t stored, CommandTimer const& timer);

} // namespace simulation::marvell
