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
        bool isEntry = false;
        /// Nobody wrote it: what is in it, the chip has had since its reset.
        bool isAfterReset = false;
    };

    /// For addUnread(): all of the chip, or all of its tables.
    static constexpr char const* wholeChip = "";
    static constexpr char const* tables = "tables";

    void addRegister(std::string const& unit, std::string const& name, std::vector<Field> fields,
                     bool isAfterReset = false);
    void addEntry(std::string const& table, std::string const& name, std::vector<Field> fields);

    /// The unit could not be read; what was added of it counts for nothing.
    /// \param reason one line that names the unit.
    void addUnread(std::string const& unit, std::string const& reason);

    std::vector<Item> const& getItems() const { return _items; }

    /// Null when the chip has none of that name.
    Item const* find(std::string const& unit, std::string const& name) const;

    bool isUnread(std::string const& unit) const;
    /// Whether the chip was read where the item is.
    bool covers(Item const& item) const;

    /// What could not be read and why, in one line; empty when all could.
    std::string getUnread() const;

private:
    struct Unread {
        std::string unit;
        std::string reason;
    };

    std::vector<Item> _items;
    std::map<std::pair<std::string, std::string>, std::size_t> _index;
    std::vector<Unread> _unread;
};

} // namespace chips
