#pragma once

#include <string>
#include <vector>

#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/Arguments.hpp"

namespace switchctl {

/// `--fault KIND[:N]`: what goes wrong with a simulated board.
class Faults {
public:
    Arguments::Option addTo(Arguments& arguments);

    /// All of them, from now on. Throws ToolError (usage) when one does not fit the board.
    /// \param line the board's serial line, or null.
    void strike(simulation::SimulatedBoard& board, simulation::SerialController* line = nullptr) const;

private:
    std::vector<std::string> _texts;
};

} // namespace switchctl
