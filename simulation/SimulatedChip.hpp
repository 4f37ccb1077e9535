#pragma once

#include <cstdint>
#include <string>

#include "simulation/ChipTestSide.hpp"

namespace simulation {

class BoardBuses;

/// A chip of a board, seen by the board.
class SimulatedChip {
public:
    virtual ~SimulatedChip() = default;

    /// The text of the document's switchModel attribute.
    virtual std::string getModel() const = 0;

    /// Puts the chip on the buses where it answers. Called once.
    virtual void attach(BoardBuses& buses) = 0;

    virtual ChipTestSide& getTestSide() = 0;

    /// Time that transfers have taken on a bus that is the chip's own; 0 when it has none.
    virtual std::uint64_t getBusNanoseconds() const { return 0; }
};

} // namespace simulation
