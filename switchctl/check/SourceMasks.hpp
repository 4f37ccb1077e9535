#pragma once

#include <cstdint>
#include <map>
#include <set>

#include "board/BoardReading.hpp"

namespace switchctl::check {

/// To which ports a VSC7390's ports may send when start-up is over: the last thing that decides about
/// every frame. Either the routes of the port-based VLANs, or, as soon as the library sets up one link,
/// all ports that are up.
class SourceMasks {
public:
    SourceMasks(board::BoardReading const& board, board::BoardReading::Switch const& owner);

    /// Whether frames from port `from` may go to port `to`.
    bool isOpen(unsigned int from, unsigned int to) const;

    /// Whether links are set up, so that the port-based VLANs no longer count.
    bool areRewritten() const { return _rewritten; }

private:
    void followLinks();
    void followVlans(board::BoardReading const& board);
    void keepTrunksApart();

    board::BoardReading::Switch const& _owner;
    std::map<unsigned int, std::set<unsigned int>> _open;
    bool _rewritten = false;
};

} // namespace switchctl::check
