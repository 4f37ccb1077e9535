#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "simulation/BusFaults.hpp"

namespace fault_test {

/// What goes wrong.
enum class FaultKind {
    accessFails,
    allZeros,
    allOnes,
    bitFlipped,
    /// From the access on, what carries accesses to the chip shows busy: the MDIO master, or the
    /// indirect reads of a VSC7390.
    busBusy,
    /// From the access on, the SMI unit of an 88E6096 shows busy.
    chipBusy,
    /// From the access on, the chip's units that take commands show busy: tables, PHY access,
    /// statistics.
    unitBusy,
    /// From the access on, the arbiter of a VSC7390 gets rid of no frame.
    arbiterBusy,
    /// All of these show busy for 300 ms.
    readyLate,
    /// From the access on, the chip's socket is empty.
    chipGone,
};

constexpr std::array<FaultKind, 10> allFaultKinds = {
    FaultKind::accessFails, FaultKind::allZeros, FaultKind::allOnes,  FaultKind::bitFlipped,
    FaultKind::busBusy,     FaultKind::chipBusy, FaultKind::unitBusy, FaultKind::arbiterBusy,
    FaultKind::readyLate,   FaultKind::chipGone};

/// For tables and messages, for example "one bit flipped".
std::string nameOf(FaultKind kind);

/// One thing that goes wrong at one access.
struct Fault {
    FaultKind kind;
    /// Counted from the first access of the board, which is 1.
    std::uint64_t number;
    /// The access as it is when nothing goes wrong.
    simulation::BusFaults::Access access;
    /// The switch that it is for.
    unsigned switchId;

    bool isOnMdio() const;
    /// Whether the switch has what the fault is in.
    bool isPossible() const;
    /// Which bit is flipped: another one for each access.
    unsigned bit() const;
    std::string describe() const;
};

} // namespace fault_test
