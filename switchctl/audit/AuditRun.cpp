#include "switchctl/audit/AuditRun.hpp"

#include "chips/ToolError.hpp"
#include "switchctl/audit/ChipReader.hpp"

namespace switchctl::audit {

AuditRun::AuditRun(board::ModelBringUp& bringUp) {
    for (unsigned const id : bringUp.getBoard().getSwitchIds()) {
        _chips.emplace_back(bringUp, id);
    }
    board::BoardAccess board(bringUp.getBoard());
    for (Chip& chip : _chips) {
        chip.expected = read(board, chip.scope);
        for (std::string const& line : chip.expected.getUnread()) {
            throw chips::ToolError(chips::ExitStatus::registerFailed,
                                   "the model of " + chip.scope.getChip() + ": " + line);
        }
    }
}

void AuditRun::compare(board::BoardAccess& board) {
    for (Chip const& chip : _chips) {
        chips::ChipImage const found = read(board, chip.scope);
        for (Deviation const& deviation : Deviation::between(chip.scope.getChip(), chip.expected, found)) {
            _deviations.push_back(deviation);
        }
        for (std::string const& line : found.getUnread()) {
            _unread.push_back(chip.scope.getChip() + ": " + line);
        }
    }
}

chips::ChipImage AuditRun::read(board::BoardAccess& board, ChipScope const& scope) {
    auto const transport = board.connect(scope.getSwitchId(), scope.getModel());
    return ChipReader(scope, *transport).read();
}

unsigned AuditRun::getSwitches() const {
    return static_cast<unsigned>(_chips.size());
}

unsigned AuditRun::getRegisters() const {
    unsigned registers = 0;
    for (Chip const& chip : _chips) {
        registers += chip.expected.getRegisters();
    }
    return registers;
}

unsigned AuditRun::getEntries() const {
    unsigned entries = 0;
    for (Chip const& chip : _chips) {
        entries += chip.expected.getEntries();
    }
    return entries;
}

} // namespace switchctl::audit
