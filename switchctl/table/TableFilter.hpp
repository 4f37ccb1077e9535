#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "chips/PortAddress.hpp"
#include "switchctl/Arguments.hpp"
#include "switchctl/table/BoardTable.hpp"

namespace switchctl::table {

/// The entries that are asked for: `--switch`, `--port`, `--vlan` and `--address`.
class TableFilter {
public:
    using Kind = chips::ChipTable::Kind;

    /// The words that stand for tables, in the order of their kinds.
    static std::vector<std::string> const& getNames();
    static Kind kindOf(std::string const& name);

    void addTo(Arguments& arguments);

    /// Throws Arguments::Wrong, naming the option, when entries of the table do not have what is asked for.
    void requireUse(std::string const& name) const;

    /// Throws ToolError (usage) when the board does not have the switch or port.
    /// \param path of the document, for messages.
    void requireThere(board::BoardReading const& document, std::string const& path) const;

    /// Whether the chip is one of those to be read.
    bool takesSwitch(unsigned switchId) const;

    /// Leaves the entries that are asked for.
    void apply(Kind kind, BoardTable::Part& part) const;

    std::optional<unsigned> getVlan() const;
    /// Of the switch that it is on.
    std::optional<unsigned> getPort() const;
    bool hasAddress() const { return !_address.empty(); }

private:
    bool takes(chips::ChipTable::Row const& row) const;

    std::optional<unsigned> _switch;
    std::string _port;
    std::string _vlan;
    std::string _address;
};

} // namespace switchctl::table
