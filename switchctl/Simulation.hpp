#pragma once

#include <string>

#include "switchctl/Arguments.hpp"
#include "switchctl/Faults.hpp"

namespace switchctl {

/// `--simulate[=DOCUMENT]`: chip models in place of hardware, those of another document where one is given.
///
/// `--fault KIND[:N]`: what goes wrong with them.
class Simulation {
public:
    Arguments::Option
    addTo(Arguments& arguments,
          char const* text = "Read chip models instead of hardware: those of BOARD.xml or of "
                             "another document, after they were brought up",
          char const* type = "[=OTHER.xml]") {
        auto const simulate = arguments.flag("--simulate", _value, text).type(type);
        _faults.addTo(arguments).needs(simulate);
        return simulate;
    }

    bool isChosen() const { return !_value.empty(); }

    /// The document whose models they are.
    /// \param own the one that stands for --simulate without a value.
    std::string getPath(std::string const& own) const { return _value == "true" ? own : _value; }

    /// Has the faults of the command line happen to the models from now on; see Faults.
    void strike(simulation::SimulatedBoard& board, simulation::SerialController* line = nullptr) const {
        _faults.strike(board, line);
    }

private:
    std::string _value;
    Faults _faults;
};

} // namespace switchctl
