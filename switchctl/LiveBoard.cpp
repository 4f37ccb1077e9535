#include "switchctl/LiveBoard.hpp"

#include "board/ModelBringUp.hpp"

namespace switchctl {

void LiveBoard::addTo(Arguments& arguments) {
    auto const live = arguments.flag("--live", _isChosen, "Ask what the chips of the board hold instead");
    _simulation.addTo(arguments).needs(live);
}

std::unique_ptr<board::LoadedBoard> LiveBoard::load(Xml& document, std::string const& path) const {
    auto loaded = std::make_unique<board::LoadedBoard>(document, path);
    if (_simulation.isChosen()) {
        board::ModelBringUp chips(_simulation.getPath(path));
        board::BoardAccess board(chips.getBoard());
        _simulation.strike(chips.getBoard());
        loaded->load(board);
    } else {
        board::BoardAccess board(_memoryDevice);
        loaded->load(board);
    }
    return loaded;
}

} // namespace switchctl
