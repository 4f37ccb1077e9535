#pragma once

#include <deque>
#include <set>
#include <string>

#include "board/BoardAccess.hpp"
#include "board/audit/ChipScope.hpp"
#include "chips/ChipImage.hpp"
#include "host/Xml.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// Models that hold what was read from the chips of a board, so that they forward as these do: all registers
/// and table entries that can be read without disturbing a chip. What cannot, addresses that were learned
/// above all, is in the models as after a reset.
class LoadedBoard {
public:
    /// \param document of the board; it is brought up on other models for the sake of what to read.
    /// Throws as ModelBringUp.
    LoadedBoard(Xml& document, std::string const& path);

    /// Reads the chips. Throws ToolError (registerFailed) when one could not be read completely, but for
    /// PHYs.
    void load(BoardAccess& board);

    simulation::SimulatedBoard& getBoard() { return _board; }

    /// VIDs of which the tables of the chips have something of their own.
    std::set<unsigned> const& getVids() const { return _vids; }

private:
    void addVids(ChipScope const& scope);
    void loadChip(ChipScope const& scope, chips::ChipImage const& image);

    std::deque<ChipScope> _scopes;
    simulation::SimulatedBoard _board;
    std::set<unsigned> _vids;
};

} // namespace board
