#include "switchctl/Faults.hpp"

#include "board/faults/SimulatedFault.hpp"
#include "chips/ToolError.hpp"

namespace switchctl {

namespace {

std::string complaintOf(std::string const& text) {
    try {
        board::SimulatedFault const fault(text);
        return "";
    } catch (chips::ToolError const& error) {
        return error.what();
    }
}

} // namespace

Arguments::Option Faults::addTo(Arguments& arguments) {
    return arguments
        .option("--fault", _texts,
                "What goes wrong with the simulated board; \"switchctl faults\" lists it. May be repeated")
        .type("KIND[:N]")
        .oneEach()
        .check(complaintOf);
}

void Faults::strike(simulation::SimulatedBoard& board, simulation::SerialController* line) const {
    for (std::string const& text : _texts) {
        try {
            board::SimulatedFault(text).strike(board, line);
        } catch (chips::ToolError const& error) {
            throw chips::ToolError(error.getStatus(), std::string("--fault: ") + error.what());
        }
    }
}

} // namespace switchctl
