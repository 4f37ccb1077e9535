#include "board/paths/LoadedBoard.hpp"

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
