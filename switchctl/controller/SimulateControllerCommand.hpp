#pragma once

#include <ostream>
#include <string>

#include "simulation/SimulatedBoard.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Faults.hpp"
#include "switchctl/terminal/EndSignals.hpp"

namespace switchctl::controller {

/// `switchctl simulate-controller`: a VSC7390 behind the controller of a serial line, for other programs
/// to talk to.
class SimulateControllerCommand : public Command {
public:
    SimulateControllerCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    void serveFresh(EndSignals const& signals, std::ostream& out) const;
    void serveDocument(EndSignals const& signals, std::ostream& out) const;
    void serve(simulation::SimulatedBoard& board, EndSignals const& signals, std::ostream& out) const;

    std::string _documentPath;
    std::string _link;
    Faults _faults;
    bool _fresh = false;
};

} // namespace switchctl::controller
