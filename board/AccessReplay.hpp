#pragma once

#include <functional>
#include <vector>

#include "simulation/AccessLog.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// Makes the register accesses of a log once more, one by one, on the models of another board.
class AccessReplay {
public:
    using Entry = simulation::AccessLog::Entry;
    /// Gets each write that was made, when the chip has done it.
    using Watcher = std::function<void(Entry const& write)>;

    /// The board must outlive the object.
    explicit AccessReplay(simulation::SimulatedBoard& board) : _board(board) {}

    /// Those of chips that the board does not have are left out. So are those of units behind a command: the
    /// command reaches them once more by itself.
    /// \throws std::out_of_range when a chip does not have a unit, as it is another one.
    void run(std::vector<Entry> const& accesses, Watcher const& afterEachWrite = {});

    /// The id of the switch that it went to.
    static unsigned switchOf(Entry const& access);

private:
    simulation::SimulatedBoard& _board;
};

} // namespace board
