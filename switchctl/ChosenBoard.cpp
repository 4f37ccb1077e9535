#include "switchctl/ChosenBoard.hpp"

#include "switchctl/terminal/Progress.hpp"

namespace switchctl {

ChosenBoard::ChosenBoard(Simulation const& simulation, std::string const& path,
                         std::string const& memoryDevice, std::ostream& errors, Past const& past) {
    if (!simulation.isChosen()) {
        _access = std::make_unique<board::BoardAccess>(memoryDevice);
        return;
    }
    std::string const modelled = simulation.getPath(path);
    Progress const progress(errors, "bringing up the models of " + modelled);
    _models = std::make_unique<board::ModelBringUp>(modelled);
    _access = std::make_unique<board::BoardAccess>(_models->getBoard());
    if (past) {
        past(*_models);
    }
    simulation.strike(_models->getBoard());
}

std::string ChosenBoard::getSource(Simulation const& simulation, std::string const& path) {
    return !simulation.isChosen() ? "the board's chips" : "the models of " + simulation.getPath(path);
}

} // namespace switchctl
