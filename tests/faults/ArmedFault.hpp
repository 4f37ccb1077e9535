#pragma once

#include <cstdint>
#include <vector>

#include "simulation/SimulatedBoard.hpp"
#include "tests/faults/Fault.hpp"

namespace fault_test {

/// A fault that waits for its access on a board, and what has become of it.
///
/// While something is busy for good, late or gone, the buses are slow, so that time-outs come after
/// few looks. Whoever still waits when `patience` accesses have gone by since the fault is taken to
/// wait for good; the board is mended then, so that it can go on.
class ArmedFault {
public:
    /// Both references must outlive the object, and the object whatever uses the board.
    /// \param before accesses of the board that do not count for the number of the fault.
    ArmedFault(simulation::SimulatedBoard& board, Fault const& fault, std::uint64_t before,
               std::uint64_t patience);
    ArmedFault(ArmedFault const&) = delete;
    ArmedFault& operator=(ArmedFault const&) = delete;

    /// Mends the board.
    void heal();

    /// Whether somebody would have waited for good.
    bool hasLostPatience() const;

    /// The accesses with which it waited.
    std::vector<simulation::BusFaults::Access> const& getLastAccesses() const;

private:
    void strike();
    void makeBusy();

    simulation::SimulatedBoard& _board;
    Fault _fault;
    bool _hasLostPatience = false;
    std::vector<simulation::BusFaults::Access> _lastAccesses;
};

} // namespace fault_test
