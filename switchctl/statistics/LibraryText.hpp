#pragma once

#include <ostream>

#include "board/BoardAccess.hpp"
#include "board/PortSelection.hpp"

namespace switchctl::statistics {

/// The library's own text about a port's counters, by its own port objects, which are made for it and
/// set nothing up: a board that runs goes on as it did. On a VSC7390 the library clears the counters that
/// it has read.
class LibraryText {
public:
    /// `board` must outlive the object.
    explicit LibraryText(board::BoardAccess& board) : _board(board) {}

    /// Writes the text. Throws ToolError (noStatistics), with nothing written, when a counter could not
    /// be read.
    void write(board::PortSelection::Port const& port, std::ostream& out);

private:
    board::BoardAccess& _board;
};

} // namespace switchctl::statistics
