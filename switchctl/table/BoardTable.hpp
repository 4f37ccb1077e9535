#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chips/ChipTable.hpp"

namespace switchctl::table {

/// One table of all chips that were asked, as far as it was read.
struct BoardTable {
    /// That of a chip.
    struct Part {
        unsigned switchId;
        /// As in configuration documents.
        std::string model;
        /// Nothing where it could not be read.
        std::optional<chips::ChipTable> table;
        /// How many entries were read and are not among those that are asked for.
        std::size_t leftOut = 0;
    };

    std::vector<Part> parts;
    /// What could not be read and why, one line each.
    std::vector<std::string> unread;
};

} // namespace switchctl::table
