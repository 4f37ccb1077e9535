#pragma once

#include <cstdint>
#include <string>

#include "chips/ChipImage.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// Puts entries of tables, as they were read from a chip, into the model of one.
class TableLoader {
public:
    /// The board must outlive the object.
    TableLoader(simulation::SimulatedBoard& board, unsigned switchId) : _board(board), _switchId(switchId) {}

    /// Throws std::out_of_range when it is no entry of a table of the chip.
    void load(chips::ChipImage::Item const& entry) const;

private:
    using Item = chips::ChipImage::Item;

    void loadVtu(Item const& entry) const;
    void loadStu(Item const& entry) const;
    void loadAtu(Item const& entry) const;
    void loadVlan(Item const& entry) const;
    void loadMac(Item const& entry) const;

    simulation::SimulatedBoard& _board;
    unsigned const _switchId;
};

} // namespace board
