#include "board/ReachedChip.hpp"

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace board {

ReachedChip::ReachedChip(BoardAccess& board, unsigned switchId, std::string const& model)
    : _switchId(switchId),
      _kind(chips::ChipKinds::get(model, "switchctl")),
      _catalogue(model),
      _transport(board.connect(switchId, model)) {}

void ReachedChip::requireAnswer(chips::ExitStatus status) {
    std::string const silence =
        "switch " + std::to_string(_switchId) + ": no " + _catalogue.getModel() + " answers";
    bool isThere = false;
    try {
        isThere = _kind.answers(_catalogue, *_transport);
    } catch (chips::ToolError const& error) {
        throw chips::ToolError(status, silence + " (" + error.what() + ")");
    }
    if (!isThere) {
        throw chips::ToolError(status, silence);
    }
}

} // namespace board
