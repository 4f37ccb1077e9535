#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl {

/// The board that a command reads without a bring-up of its own: hardware, or with `--simulate` models after
/// theirs, with the faults of the command line.
class ChosenBoard {
public:
    /// What happens to the models before the faults.
    using Past = std::function<void(board::ModelBringUp& models)>;

    /// Throws as board::BoardAccess and board::ModelBringUp.
    /// \param path of the document.
    /// \param errors where a terminal may show that models come up.
    ChosenBoard(Simulation const& simulation, std::string const& path, std::string const& memoryDevice,
                std::ostream& errors, Past const& past = {});

    board::BoardAccess& getAccess() { return *_access; }

    /// Null on a board.
    board::ModelBringUp* getModels() { return _models.get(); }

    /// What is read, for people.
    static std::string getSource(Simulation const& simulation, std::string const& path);

private:
    std::unique_ptr<board::ModelBringUp> _models;
    std::unique_ptr<board::BoardAccess> _access;
};

} // namespace switchctl
