#pragma once

#include <functional>
#include <map>
#include <memory>

#include "board/ReachedChip.hpp"
#include "switchctl/table/BoardTable.hpp"
#include "switchctl/table/TableFilter.hpp"

namespace switchctl::table {

/// Reads a table of the chips of a board, and has them forget addresses.
///
/// Belongs to the thread that constructs it, as the board does.
class BoardTableReader {
public:
    /// All must outlive the reader.
    BoardTableReader(board::BoardAccess& board, board::BoardReading const& document,
                     TableFilter const& filter)
        : _board(board), _document(document), _filter(filter) {}

    /// Switches by id. A chip that does not answer is a line in what could not be read.
    BoardTable read(chips::ChipTable::Kind kind);

    /// Has the chips forget what the filter asks for and was learnt. Static addresses stay.
    /// \param addresses what was read before. A chip that fails gets a line in what could not be read, and
    /// its
    ///        part becomes unread.
    void flush(BoardTable& addresses);

private:
    struct Reach {
        Reach(board::BoardAccess& board, BoardTable::Part const& part);

        board::ReachedChip chip;
        std::unique_ptr<chips::TableReader> reader;
    };
    using Work = std::function<void(chips::TableReader& reader)>;

    /// \return false when the chip fails, which is told in `table`.
    bool with(BoardTable::Part const& part, BoardTable& table, Work const& work);

    board::BoardAccess& _board;
    board::BoardReading const& _document;
    TableFilter const& _filter;
    std::map<unsigned, Reach> _chips;
};

} // namespace switchctl::table
