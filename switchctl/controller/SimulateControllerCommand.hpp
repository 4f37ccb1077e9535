#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "chips/ExitStatus.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/terminal/EndSignals.hpp"

namespace switchctl::controller {

/// `switchctl simulate-controller`: a VSC7390 behind the controller of a serial line, for other programs
/// to talk to.
class SimulateControllerCommand {
public:
    /// Adds the command to the program's command line.
    explicit SimulateControllerCommand(CLI::App& program);
    SimulateControllerCommand(SimulateControllerCommand const&) = delete;
    SimulateControllerCommand& operator=(SimulateControllerCommand const&) = delete;

    /// Whether the parsed command line asks for it.
    bool isChosen() const;

    /// Prints the line's device and serves it until the process is told to end (SIGINT, SIGTERM).
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    void serveFresh(EndSignals const& signals, std::ostream& out) const;
    void serveDocument(EndSignals const& signals, std::ostream& out) const;
    void serve(simulation::SimulatedBoard& board, EndSignals const& signals, std::ostream& out) const;

    CLI::App* _command;
    std::string _documentPath;
    std::string _link;
    bool _fresh = false;
};

} // namespace switchctl::controller
