#include "board/audit/AuditRun.hpp"

#include <fmt/format.h>

#include "board/audit/ChipReader.hpp"
#include "chips/ToolError.hpp"

namespace board {

namespace {

std::string counted(std::size_t number, char const* one, char const* many) {
    return fmt::format("{} {}", number, number == 1 ? one : many);
}

} // namespace

AuditRun::AuditRun(ModelBringUp& bringUp, ChipScope::Extent extent) {
    for (unsigned const id : bringUp.getBoard().getSwitchIds()) {
        _chips.emplace_back(bringUp, id, extent);
    }
    BoardAccess board(bringUp.getBoard());
    for (Chip& chip : _chips) {
        chip.expected = read(board, chip.scope);
        std::string const unread = chip.expected.getUnread();
        if (!unread.empty()) {
            throw chips::ToolError(chips::ExitStatus::registerFailed,
                                   "the model of " + chip.scope.getChip() + ": " + unread);
        }
    }
}

void AuditRun::compare(BoardAccess& board) {
    for (Chip const& chip : _chips) {
        chips::ChipImage const found = read(board, chip.scope);
        for (Deviation const& deviation : Deviation::between(chip.scope.getChip(), chip.expected, found)) {
            _deviations.push_back(deviation);
        }
        count(chip.expected, found);
        std::string const unread = found.getUnread();
        if (!unread.empty()) {
            _unread.push_back(chip.scope.getChip() + ": " + unread);
        }
    }
}

void AuditRun::count(chips::ChipImage const& expected, chips::ChipImage const& found) {
    _switchesRead += found.isUnread(chips::ChipImage::wholeChip) ? 0 : 1;
    for (chips::ChipImage::Item const& item : expected.getItems()) {
        if (found.covers(item)) {
            ++(item.isEntry ? _entries : _registers);
        }
    }
}

chips::ChipImage AuditRun::read(BoardAccess& board, ChipScope const& scope) {
    try {
        auto const transport = board.connect(scope.getSwitchId(), scope.getModel());
        return ChipReader(scope, *transport).read();
    } catch (chips::ToolError const& error) {
        chips::ChipImage unread;
        unread.addUnread(chips::ChipImage::wholeChip, error.what());
        return unread;
    }
}

ChipScope const* AuditRun::find(unsigned switchId) const {
    for (Chip const& chip : _chips) {
        if (chip.scope.getSwitchId() == switchId) {
            return &chip.scope;
        }
    }
    return nullptr;
}

LeftOut AuditRun::getLeftOut() const {
    LeftOut all;
    for (Chip const& chip : _chips) {
        all.add(chip.scope.getLeftOut());
    }
    return all;
}

std::string AuditRun::getSummary() const {
    std::string text = _switchesRead < getSwitches() ? fmt::format("{} of ", _switchesRead) : "";
    text += counted(getSwitches(), "switch", "switches") + ", " +
            counted(_registers, "register", "registers") + ", " +
            counted(_entries, "table entry", "table entries");
    if (_unread.empty() || !_deviations.empty()) {
        text += ", " + counted(_deviations.size(), "deviation", "deviations");
    }
    // Nobody knows that nothing deviates.
    return text + (_unread.empty() ? "" : ", not everything was read");
}

unsigned AuditRun::getSwitches() const {
    return static_cast<unsigned>(_chips.size());
}

} // namespace board
