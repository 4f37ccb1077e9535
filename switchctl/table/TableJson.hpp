#pragma once

#include <nlohmann/json.hpp>

#include "board/BoardReading.hpp"
#include "switchctl/table/BoardTable.hpp"

namespace switchctl::table {

/// Tables for programs.
struct TableJson {
    /// A switch that could not be read is there, without entries.
    static nlohmann::ordered_json of(BoardTable const& table, board::BoardReading const& document);

    /// One entry; it has what entries of its table have.
    static nlohmann::ordered_json of(chips::ChipTable::Row const& row, board::BoardReading const& document);
};

} // namespace switchctl::table
