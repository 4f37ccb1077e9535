#pragma once

#include <ostream>

#include "board/BoardReading.hpp"
#include "switchctl/table/BoardTable.hpp"

namespace switchctl::table {

/// Tables for people: a line an entry, below the name of the switch.
struct TableText {
    /// \param document what VLANs are called.
    static void print(BoardTable const& table, board::BoardReading const& document, std::ostream& out);

    /// The entries alone, with their headings.
    static void print(std::vector<chips::ChipTable::Row> const& rows, board::BoardReading const& document,
                      std::ostream& out);

    /// What one entry is, in short: address, VLANs, ports.
    static std::string describe(chips::ChipTable::Row const& row, board::BoardReading const& document);
};

} // namespace switchctl::table
