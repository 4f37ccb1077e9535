#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/dump/RegisterReading.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/ChipImage.hpp"

namespace board {

/// Registers of one chip and, where they were asked for, its tables, as they were at a time.
struct RegisterDump {
    struct Entry {
        /// For example "VID 5".
        std::string name;
        std::vector<chips::ChipImage::Field> fields;
        /// Where a dump that was read has it, for messages.
        std::string where;
    };

    /// A table that was read, maybe an empty one.
    struct Table {
        std::string name;
        std::vector<Entry> entries;
    };

    std::shared_ptr<chips::ChipCatalogue const> catalogue;
    /// How the chip was reached, for example "smi --switch 0"; empty when the dump does not say it.
    std::string transport;
    std::vector<RegisterReading> readings;
    /// Without those that were not read.
    std::vector<Table> tables;
    /// Of the file that it was read from.
    std::string path;

    /// Takes the tables, all of which were read.
    void addTables(chips::ChipImage const& image, std::vector<std::string> const& names);

    /// The switch that the transport names; nothing where there can be only one of the chip.
    std::optional<unsigned> getSwitchId() const;

    /// Null when it was not read.
    Table const* findTable(std::string const& name) const;

    /// A line with the chip, then each unit in one line, and under it each register; then the tables in the
    /// same way.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// Reads what print() or a program that prints toJson() has written. Throws ToolError (badDocument), with
    /// file and line.
    static RegisterDump fromFile(std::string const& path);

private:
    /// With entries that only differ in their numbers as one: "VID 6 to 4095".
    static std::vector<Entry> foldedOf(Table const& table);
};

} // namespace board
