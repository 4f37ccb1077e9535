#include "board/faults/SimulatedFault.hpp"

#include <stdexcept>

#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"

namespace board {

SimulatedFault::SimulatedFault(std::string const& text)
    : _text(text), _kind(FaultKind::find(text.substr(0, text.find(':')))) {
    std::size_t const colon = text.find(':');
    if (_kind == nullptr) {
        refuse("no such fault; \"switchctl faults\" lists them");
    }
    if (colon != std::string::npos) {
        parse(text.substr(colon + 1));
    } else if (_kind->needsArgument()) {
        refuse("not of the form " + _kind->name + ":" + "N, N being the " +
               (_kind->argument == FaultKind::Argument::port ? "port, SWITCH.PORT" : "id of the switch"));
    }
}

void SimulatedFault::parse(std::string const& argument) {
    if (_kind->argument == FaultKind::Argument::none) {
        refuse(_kind->name + " takes no number");
    }
    if (_kind->argument == FaultKind::Argument::port) {
        auto const port = chips::PortAddress::fromText(argument);
        if (!port) {
            refuse("\"" + argument + "\" is no port, SWITCH.PORT");
        }
        _port = *port;
        return;
    }
    auto const number = chips::NumberText::parse(argument);
    if (!number || (*number == 0 && _kind->argument != FaultKind::Argument::switchId)) {
        refuse("\"" + argument + "\" is no number" + (number ? " from 1 on" : ""));
    }
    _number = *number;
}

void SimulatedFault::strike(simulation::SimulatedBoard& board, simulation::SerialController* line) const {
    if (_kind->isOfSerialLine && line == nullptr) {
        refuse("nothing goes over a simulated serial line here");
    }
    try {
        _kind->strike({board, line, _number, _port});
    } catch (std::out_of_range const& error) {
        refuse(error.what());
    }
}

void SimulatedFault::refuse(std::string const& reason) const {
    throw chips::ToolError(chips::ExitStatus::usage, "\"" + _text + "\": " + reason);
}

} // namespace board
