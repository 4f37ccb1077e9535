#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/PortSelection.hpp"
#include "board/ReachedChip.hpp"
#include "chips/CounterReader.hpp"

namespace switchctl::statistics {

/// Reads the counters of a board's ports, as often as asked for.
///
/// Belongs to the thread that constructs it, as the board does.
class BoardSampler {
public:
    /// Both must outlive the sampler.
    BoardSampler(board::BoardAccess& board, board::PortSelection const& selection);

    /// Called before each port is read, with how many of how many are done; may be empty.
    using Watcher = std::function<void(std::size_t done, std::size_t all)>;

    /// The ports in the order of the selection. A chip that does not answer is a line in what could not
    /// be read, and its ports are without values.
    chips::CounterSample sample(Watcher const& watcher = {});

    /// Throws ToolError (noStatistics) when the switch's chip does not answer.
    void requireChip(board::PortSelection::Port const& port);

private:
    struct Reach {
        Reach(board::BoardAccess& board, board::PortSelection::Port const& port);

        board::ReachedChip chip;
        std::unique_ptr<chips::CounterReader> reader;
    };

    Reach& connect(board::PortSelection::Port const& port);
    bool isThere(board::PortSelection::Port const& port, std::vector<std::string>& unread);

    board::BoardAccess& _board;
    board::PortSelection const& _selection;
    std::map<unsigned, Reach> _chips;
};

} // namespace switchctl::statistics
