#pragma once

#include <functional>
#include <map>
#include <memory>

#include "board/ReachedChip.hpp"
#include "switchctl/status/StatusSample.hpp"

namespace switchctl::status {

/// Reads the state of a board's ports, as often as asked for.
///
/// Belongs to the thread that constructs it, as the board does.
class StatusSampler {
public:
    /// Both must outlive the sampler.
    StatusSampler(board::BoardAccess& board, board::PortSelection const& selection);

    /// Called before each port is read, with how many of how many are done; may be empty.
    using Watcher = std::function<void(std::size_t done, std::size_t all)>;

    /// The ports in the order of the selection. A chip that does not answer is a line in what could not be
    /// read, and nothing of its ports is.
    StatusSample sample(Watcher const& watcher = {});

private:
    struct Reach {
        Reach(board::BoardAccess& board, board::PortSelection::Port const& port);

        board::ReachedChip chip;
        std::unique_ptr<chips::PortStatusReader> reader;
    };

    void dropLost(std::map<unsigned, bool>& there, StatusSample& result);
    bool isThere(Reach& reach, std::vector<std::string>& unread) const;

    board::BoardAccess& _board;
    board::PortSelection const& _selection;
    std::map<unsigned, Reach> _chips;
};

} // namespace switchctl::status
