#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/audit/ChipScope.hpp"
#include "board/dump/DumpedChip.hpp"
#include "board/dump/RegisterDump.hpp"
#include "board/paths/RegisterPaths.hpp"
#include "chips/ChipImage.hpp"
#include "host/Xml.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// Models that hold what was read from the chips of a board, so that they forward as these do: all registers
/// and table entries that can be read without disturbing a chip. What cannot is in the models as after a
/// reset; addresses that were learned are in them when they come from dumps.
class LoadedBoard {
public:
    /// \param document of the board; it is brought up on other models for the sake of what to read.
    /// Throws as ModelBringUp.
    LoadedBoard(Xml& document, std::string const& path);

    /// Reads the chips. Throws ToolError (registerFailed) when one could not be read completely, but for
    /// PHYs.
    void load(BoardAccess& board);

    /// Takes what was read at another time. A switch that no dump is of stays unread. Throws ToolError
    /// (badDocument) when a dump is of no switch of the board, or lacks something of its switch but PHYs.
    void load(std::vector<RegisterDump> const& dumps);

    /// Switches of which nothing is known: what their models hold means nothing.
    std::set<unsigned> const& getUnread() const { return _unread; }

    /// Switches with PHYs that are unread: these are as after a reset.
    std::set<unsigned> const& getUnreadPhys() const { return _unreadPhys; }

    /// Those that are read, to ask.
    RegisterPaths::Chips getChips();

    simulation::SimulatedBoard& getBoard() { return _board; }

    /// VIDs of which the tables of the chips have something of their own.
    std::set<unsigned> const& getVids() const { return _vids; }

private:
    void addVids(ChipScope const& scope);
    void loadTables(ChipScope const& scope, DumpedChip const& chip);
    void requireUse(std::vector<RegisterDump> const& dumps, std::set<RegisterDump const*> const& used) const;
    unsigned countOf(std::string const& model) const;
    void loadChip(ChipScope const& scope, chips::ChipImage const& image);

    std::deque<ChipScope> _scopes;
    simulation::SimulatedBoard _board;
    std::set<unsigned> _vids;
    std::set<unsigned> _unread;
    std::set<unsigned> _unreadPhys;
};

} // namespace board
