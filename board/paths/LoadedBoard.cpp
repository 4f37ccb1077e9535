#include "board/paths/LoadedBoard.hpp"

#include <algorithm>
#include <stdexcept>

#include "board/audit/ChipReader.hpp"
#include "board/paths/FieldAccess.hpp"
#include "board/paths/TableLoader.hpp"
#include "chips/ToolError.hpp"

namespace board {

LoadedBoard::LoadedBoard(Xml& document, std::string const& path) : _board(document) {
    ModelBringUp bringUp(document, path);
    for (unsigned const id : bringUp.getBoard().getSwitchIds()) {
        _scopes.emplace_back(bringUp, id, ChipScope::Extent::everything);
    }
}

void LoadedBoard::load(BoardAccess& board) {
    for (ChipScope const& scope : _scopes) {
        auto const transport = board.connect(scope.getSwitchId(), scope.getModel());
        chips::ChipImage const image = ChipReader(scope, *transport).read();
        if (image.isUnread(chips::ChipImage::wholeChip) || image.isUnread(chips::ChipImage::tables)) {
            throw chips::ToolError(chips::ExitStatus::registerFailed,
                                   scope.getChip() + ": " + image.getUnread());
        }
        loadChip(scope, image);
        addVids(scope);
    }
}

void LoadedBoard::load(std::vector<RegisterDump> const& dumps) {
    std::set<RegisterDump const*> used;
    for (ChipScope const& scope : _scopes) {
        DumpedChip const chip(scope, dumps, countOf(scope.getModel()) == 1);
        if (chip.isUnread()) {
            _unread.insert(scope.getSwitchId());
            continue;
        }
        used.insert(chip.getDumps().begin(), chip.getDumps().end());
        chips::ChipImage const image = chip.getRegisters();
        if (!image.getUnread().empty()) {
            _unreadPhys.insert(scope.getSwitchId());
        }
        loadChip(scope, image);
        loadTables(scope, chip);
        addVids(scope);
    }
    requireUse(dumps, used);
}

void LoadedBoard::loadTables(ChipScope const& scope, DumpedChip const& chip) {
    TableLoader const loader(_board, scope.getSwitchId());
    for (RegisterDump::Table const* const table : chip.getTables()) {
        for (RegisterDump::Entry const& entry : table->entries) {
            try {
                loader.load({table->name, entry.name, entry.fields, true});
            } catch (std::out_of_range const& error) {
                throw chips::ToolError(chips::ExitStatus::badDocument, entry.where + ": " + error.what());
            }
        }
    }
}

void LoadedBoard::requireUse(std::vector<RegisterDump> const& dumps,
                             std::set<RegisterDump const*> const& used) const {
    for (RegisterDump const& dump : dumps) {
        if (used.count(&dump) == 0) {
            std::string const& model = dump.catalogue->getModel();
            throw chips::ToolError(chips::ExitStatus::badDocument,
                                   dump.path +
                                       (!dump.getSwitchId() && countOf(model) > 1
                                            ? ": does not say of which " + model + " of the board it is"
                                            : ": of a " + model +
                                                  (dump.transport.empty() ? "" : " over " + dump.transport) +
                                                  ", which the board does not have"));
        }
    }
}

unsigned LoadedBoard::countOf(std::string const& model) const {
    return static_cast<unsigned>(std::count_if(
        _scopes.begin(), _scopes.end(), [&](ChipScope const& scope) { return scope.getModel() == model; }));
}

RegisterPaths::Chips LoadedBoard::getChips() {
    RegisterPaths::Chips chips = RegisterPaths::chipsOf(_board);
    for (unsigned const id : _unread) {
        chips.erase(id);
    }
    return chips;
}

void LoadedBoard::addVids(ChipScope const& scope) {
    if (scope.getModel() == "88e6096") {
        for (auto const& [vid, entry] : _board.getMarvell(scope.getSwitchId()).getVtu()) {
            _vids.insert(vid);
        }
    } else {
        for (auto const& [vid, entry] : _board.getVitesse(scope.getSwitchId()).getVlans()) {
            _vids.insert(vid);
        }
    }
}

void LoadedBoard::loadChip(ChipScope const& scope, chips::ChipImage const& image) {
    FieldAccess const fields(_board.getChip(scope.getSwitchId()), scope.getModel());
    TableLoader const tables(_board, scope.getSwitchId());
    for (chips::ChipImage::Item const& item : image.getItems()) {
        if (item.isEntry) {
            tables.load(item);
        } else if (image.covers(item)) {
            for (chips::ChipImage::Field const& field : item.fields) {
                fields.set(item.unit, item.name, field.name, field.value);
            }
        }
    }
}

} // namespace board
