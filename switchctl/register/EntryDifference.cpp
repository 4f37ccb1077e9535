#include "switchctl/register/EntryDifference.hpp"

#include <fmt/ostream.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

namespace switchctl::registers {

namespace {

char const* presence(bool isThere) {
    return isThere ? "present" : "absent";
}

} // namespace

EntryDifference::EntryDifference(std::string table, std::string entry, bool isInFirst, bool isInSecond,
                                 std::vector<Field> fields)
    : _table(std::move(table)),
      _entry(std::move(entry)),
      _isInFirst(isInFirst),
      _isInSecond(isInSecond),
      _fields(std::move(fields)) {}

std::vector<EntryDifference> EntryDifference::between(board::RegisterDump const& first,
                                                      board::RegisterDump const& second) {
    std::vector<EntryDifference> differences;
    for (Table const& table : first.tables) {
        Table const* const other = second.findTable(table.name);
        if (other == nullptr) {
            differences.push_back({table.name, "", true, false, {}});
        } else {
            compare(table, *other, differences);
        }
    }
    for (Table const& table : second.tables) {
        if (first.findTable(table.name) == nullptr) {
            differences.push_back({table.name, "", false, true, {}});
        }
    }
    return differences;
}

void EntryDifference::compare(Table const& first, Table const& second,
                              std::vector<EntryDifference>& differences) {
    std::map<std::string, Entry const*> others;
    for (Entry const& entry : second.entries) {
        others.emplace(entry.name, &entry);
    }
    std::set<std::string> known;
    for (Entry const& entry : first.entries) {
        known.insert(entry.name);
        auto const other = others.find(entry.name);
        if (other == others.end()) {
            differences.push_back({first.name, entry.name, true, false, {}});
            continue;
        }
        std::vector<Field> const fields = fieldsBetween(entry, *other->second);
        if (!fields.empty()) {
            differences.push_back({first.name, entry.name, true, true, fields});
        }
    }
    for (Entry const& entry : second.entries) {
        if (known.count(entry.name) == 0) {
            differences.push_back({first.name, entry.name, false, true, {}});
        }
    }
}

// A field that an entry does not have counts as 0 there.
std::vector<EntryDifference::Field> EntryDifference::fieldsBetween(Entry const& first, Entry const& second) {
    std::map<std::string, std::pair<std::uint32_t, std::uint32_t>> values;
    for (auto const& field : first.fields) {
        values[field.name].first = field.value;
    }
    for (auto const& field : second.fields) {
        values[field.name].second = field.value;
    }
    std::vector<Field> fields;
    for (auto const& [name, both] : values) {
        if (both.first != both.second) {
            fields.push_back({name, both.first, both.second});
        }
    }
    return fields;
}

void EntryDifference::print(std::ostream& out) const {
    fmt::print(out, "{}{}{}:", _table, _entry.empty() ? "" : "/", _entry);
    if (!_isInFirst || !_isInSecond) {
        fmt::print(out, " {} -> {}", presence(_isInFirst), presence(_isInSecond));
    }
    out << '\n';
    for (Field const& field : _fields) {
        fmt::print(out, "    {}: 0x{:x} -> 0x{:x}\n", field.name, field.first, field.second);
    }
}

nlohmann::ordered_json EntryDifference::toJson() const {
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    for (Field const& field : _fields) {
        fields.push_back({{"name", field.name}, {"first", field.first}, {"second", field.second}});
    }
    nlohmann::ordered_json json = {{"table", _table}};
    if (!_entry.empty()) {
        json["entry"] = _entry;
    }
    json.update({{"first", presence(_isInFirst)}, {"second", presence(_isInSecond)}, {"fields", fields}});
    return json;
}

} // namespace switchctl::registers
