#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "board/dump/RegisterDump.hpp"

namespace switchctl::registers {

/// An entry of a table that two dumps do not agree about, or a table that only one of them has.
class EntryDifference {
public:
    /// The entry in one line, then each field that differs in one.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// By table, first what the first dump has.
    static std::vector<EntryDifference> between(board::RegisterDump const& first,
                                                board::RegisterDump const& second);

private:
    struct Field {
        std::string name;
        std::uint32_t first;
        std::uint32_t second;
    };

    using Table = board::RegisterDump::Table;
    using Entry = board::RegisterDump::Entry;

    EntryDifference(std::string table, std::string entry, bool isInFirst, bool isInSecond,
                    std::vector<Field> fields);
    static void compare(Table const& first, Table const& second, std::vector<EntryDifference>& differences);
    static std::vector<Field> fieldsBetween(Entry const& first, Entry const& second);

    std::string _table;
    /// Empty when it is the whole table.
    std::string _entry;
    bool _isInFirst;
    bool _isInSecond;
    std::vector<Field> _fields;
};

} // namespace switchctl::registers
