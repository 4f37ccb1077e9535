#pragma once

#include <deque>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "chips/ChipImage.hpp"
#include "switchctl/audit/ChipScope.hpp"
#include "switchctl/audit/Deviation.hpp"

namespace switchctl::audit {

/// An audit: what a bring-up leaves in models, and then what is in the chips.
class AuditRun {
public:
    /// Takes what is expected from models that the document has been brought up on, which are not needed
    /// afterwards. Throws ToolError (registerFailed) when they cannot be read.
    explicit AuditRun(board::ModelBringUp& bringUp);

    /// Reads the chips and compares. Throws ToolError (noHardware).
    void compare(board::BoardAccess& board);

    /// In the order of the switches' ids.
    std::vector<Deviation> const& getDeviations() const { return _deviations; }

    /// What could not be read, one line each.
    std::vector<std::string> const& getUnread() const { return _unread; }

    unsigned getSwitches() const;
    /// How many were compared.
    unsigned getRegisters() const;
    unsigned getEntries() const;

private:
    struct Chip {
        Chip(board::ModelBringUp& bringUp, unsigned switchId) : scope(bringUp, switchId) {}
        ChipScope scope;
        chips::ChipImage expected;
    };

    static chips::ChipImage read(board::BoardAccess& board, ChipScope const& scope);

    // The catalogues of the scopes stay where they are.
    std::deque<Chip> _chips;
    std::vector<Deviation> _deviations;
    std::vector<std::string> _unread;
};

} // namespace switchctl::audit
