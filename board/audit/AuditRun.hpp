#pragma once

#include <deque>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "board/audit/ChipScope.hpp"
#include "board/audit/Deviation.hpp"
#include "chips/ChipImage.hpp"

namespace board {

/// An audit: what a bring-up leaves in models, and then what is in the chips.
class AuditRun {
public:
    /// Takes what is expected from models that the document has been brought up on, which are not needed
    /// afterwards. Throws ToolError (registerFailed) when they cannot be read.
    AuditRun(ModelBringUp& bringUp, ChipScope::Extent extent);

    /// Reads the chips and compares.
    void compare(BoardAccess& board);

    /// Null when the document has no such switch.
    ChipScope const* find(unsigned switchId) const;

    /// In the order of the switches' ids.
    std::vector<Deviation> const& getDeviations() const { return _deviations; }

    /// One line for each switch that could not be read, or not completely.
    std::vector<std::string> const& getUnread() const { return _unread; }

    LeftOut getLeftOut() const;

    /// How much was compared, and with what result: "1 switch, 33 registers, 2 table entries, 0 deviations".
    /// Never so many when something was not read.
    std::string getSummary() const;

    /// How many the document has.
    unsigned getSwitches() const;
    /// \name How many were read and compared
    /// @{
    unsigned getSwitchesRead() const { return _switchesRead; }
    unsigned getRegisters() const { return _registers; }
    unsigned getEntries() const { return _entries; }
    /// @}

private:
    struct Chip {
        Chip(ModelBringUp& bringUp, unsigned switchId, ChipScope::Extent extent)
            : scope(bringUp, switchId, extent) {}
        ChipScope scope;
        chips::ChipImage expected;
    };

    void count(chips::ChipImage const& expected, chips::ChipImage const& found);
    static chips::ChipImage read(BoardAccess& board, ChipScope const& scope);

    // The catalogues of the scopes stay where they are.
    std::deque<Chip> _chips;
    std::vector<Deviation> _deviations;
    std::vector<std::string> _unread;
    unsigned _switchesRead = 0;
    unsigned _registers = 0;
    unsigned _entries = 0;
};

} // namespace board
