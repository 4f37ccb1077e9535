#include "board/dump/RegisterDump.hpp"

#include <fmt/ostream.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "board/dump/DumpReader.hpp"
#include "board/dump/EntryRange.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/InputFile.hpp"

namespace board {

namespace {

bool isSame(std::vector<chips::ChipImage::Field> const& first,
            std::vector<chips::ChipImage::Field> const& second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](auto const& one, auto const& other) {
                          return one.name == other.name && one.value == other.value;
                      });
}

} // namespace

void RegisterDump::addTables(chips::ChipImage const& image, std::vector<std::string> const& names) {
    for (std::string const& name : names) {
        tables.push_back({name, {}});
        for (chips::ChipImage::Item const& item : image.getItems()) {
            if (item.isEntry && item.unit == name) {
                tables.back().entries.push_back({item.name, item.fields, ""});
            }
        }
    }
}

std::optional<unsigned> RegisterDump::getSwitchId() const {
    std::istringstream words(transport);
    unsigned id = 0;
    for (std::string word; words >> word;) {
        if (word == "--switch" && words >> id) {
            return id;
        }
    }
    return std::nullopt;
}

RegisterDump::Table const* RegisterDump::findTable(std::string const& name) const {
    auto const found =
        std::find_if(tables.begin(), tables.end(), [&](Table const& table) { return table.name == name; });
    return found == tables.end() ? nullptr : &*found;
}

std::vector<RegisterDump::Entry> RegisterDump::foldedOf(Table const& table) {
    std::vector<Entry> folded;
    for (auto first = table.entries.begin(); first != table.entries.end();) {
        EntryRange range(first->name);
        auto end = std::next(first);
        while (end != table.entries.end() && isSame(first->fields, end->fields) && range.extend(end->name)) {
            ++end;
        }
        folded.push_back({range.getText(), first->fields, ""});
        first = end;
    }
    return folded;
}

void RegisterDump::print(std::ostream& out) const {
    out << "chip " << catalogue->getModel() << "\nover " << transport << '\n';
    std::string unit;
    for (RegisterReading const& reading : readings) {
        if (reading.location.unit != unit) {
            unit = reading.location.unit;
            out << unit << '\n';
        }
        reading.printShort(out);
    }
    for (Table const& table : tables) {
        out << DumpReader::tableWord << table.name << '\n';
        for (Entry const& entry : foldedOf(table)) {
            fmt::print(out, "  {:22}", entry.name);
            for (chips::ChipImage::Field const& field : entry.fields) {
                fmt::print(out, "  {}=0x{:x}", field.name, field.value);
            }
            out << '\n';
        }
    }
}

nlohmann::ordered_json RegisterDump::toJson() const {
    nlohmann::ordered_json registers = nlohmann::ordered_json::array();
    for (RegisterReading const& reading : readings) {
        registers.push_back(reading.toJson());
    }
    nlohmann::ordered_json json = {
        {"chip", catalogue->getModel()}, {"over", transport}, {"registers", registers}};
    for (Table const& table : tables) {
        nlohmann::ordered_json entries = nlohmann::ordered_json::array();
        for (Entry const& entry : foldedOf(table)) {
            nlohmann::ordered_json fields = nlohmann::ordered_json::array();
            for (chips::ChipImage::Field const& field : entry.fields) {
                fields.push_back({{"name", field.name}, {"value", field.value}});
            }
            entries.push_back({{"entry", entry.name}, {"fields", fields}});
        }
        json["tables"].push_back({{"table", table.name}, {"entries", entries}});
    }
    return json;
}

RegisterDump RegisterDump::fromFile(std::string const& path) {
    try {
        return DumpReader(path).read(reference_host::InputFile::read(path));
    } catch (reference_host::InputFile::Error const& error) {
        throw chips::ToolError(chips::ExitStatus::badDocument, path + ": " + error.what());
    }
}

} // namespace board
