#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "board/BoardReading.hpp"
#include "switchctl/table/BoardTable.hpp"

namespace switchctl::table {

/// What a flush of addresses has changed, by what was read before and after it.
class TableFlush {
public:
    /// \param before with parts that are unread where the flush failed.
    TableFlush(BoardTable const& before, BoardTable const& after);

    void print(board::BoardReading const& document, std::ostream& out) const;
    nlohmann::ordered_json toJson(board::BoardReading const& document) const;

    /// What could not be read or flushed and why, one line each.
    std::vector<std::string> const& getUnread() const { return _unread; }

    /// Those that a flush is about.
    static std::vector<chips::ChipTable::Row> learntOf(BoardTable::Part const& part);

private:
    struct Part {
        unsigned switchId;
        std::string model;
        bool isUnread;
        std::vector<chips::ChipTable::Row> flushed;
        /// Learnt anew since, or never gone.
        std::vector<chips::ChipTable::Row> there;
        std::size_t kept = 0;
    };

    std::vector<Part> _parts;
    std::vector<std::string> _unread;
};

} // namespace switchctl::table
