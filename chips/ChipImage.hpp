#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace chips {

/// What was read from one chip: registers and table entries, taken apart into fields.
class ChipImage {
public:
    struct Field {
        std::string name;
        std::uint32_t value;
    };

    /// A register, or an entry of a table.
    struct Item {
        /// For example "port 3" or "VTU".
        std::string unit;
        /// For example "PortControl" or "VID 5".
        std::string name;
        std::vector<Field> fields;
    };

    void addRegister(std::string const& unit, std::string const& name, std::vector<Field> fields);
    void addEntry(std::string const& table, std::string const& name, std::vector<Field> fields);

    /// The unit could not be read.
    void addUnread(std::string const& unit, std::string const& reason);

    std::vector<Item> const& getItems() const { return _items; }

    /// Null when the chip has none of that name.
    Item const* find(std::string const& unit, std::string const& name) const;

    /// Whether the unit could not be read, and one line for each that could not.
    bool isUnread(std::string const& unit) const;
    std::vector<std::string> getUnread() const;

    unsigned getRegisters() const { return _registers; }
    unsigned getEntries() const { return _entries; }

private:
    struct Unread {
        std::string unit;
        std::string reason;
    };

    std::vector<Item> _items;
    std::map<std::pair<std::string, std::string>, std::size_t> _index;
    std::vector<Unread> _unread;
    unsigned _registers = 0;
    unsigned _entries = 0;
};

} // namespace chips
