#pragma once

#include <map>
#include <string>
#include <vector>

#include "board/audit/ChipScope.hpp"
#include "board/dump/RegisterDump.hpp"
#include "chips/ChipImage.hpp"

namespace board {

/// What dumps have of one chip: one of its registers and tables, and one of its PHYs.
class DumpedChip {
public:
    /// \param dumps of any chips; those that are of this one count. They must outlive the object.
    /// \param isOnlyOne whether the board has no other chip of the model.
    DumpedChip(ChipScope const& scope, std::vector<RegisterDump> const& dumps, bool isOnlyOne);

    /// Whether no dump is of it.
    bool isUnread() const { return _dumps.empty(); }

    /// Those that count.
    std::vector<RegisterDump const*> const& getDumps() const { return _dumps; }

    /// The registers; PHYs that no dump has are unread. Throws ToolError (badDocument) when another register
    /// is missing, or one is there twice.
    chips::ChipImage getRegisters() const;

    /// All tables. Throws ToolError (badDocument) when one is missing or there twice.
    std::vector<RegisterDump::Table const*> getTables() const;

private:
    std::map<std::string, std::uint32_t> getValues() const;
    [[noreturn]] static void refuse(std::string const& text);
    /// The files, for messages.
    std::string getPaths() const;

    ChipScope const& _scope;
    std::vector<RegisterDump const*> _dumps;
};

} // namespace board
