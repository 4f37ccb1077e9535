#pragma once

#include <fstream>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/BoardSession.hpp"
#include "board/ProgressWatch.hpp"
#include "host/Xml.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/bringup/FindingCounts.hpp"

namespace switchctl::bringup {

/// `switchctl bring-up`: brings a board's switches up and tells what became of them.
class BringUpCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    /// \param checks run on the document first.
    /// \param prepare gets the board before start-up when it is simulated; may be empty.
    BringUpCommand(std::string memoryDevice, DocumentChecks checks,
                   std::function<void(simulation::SimulatedBoard&)> prepare = {});

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    ExitStatus bringUp(Xml& document, std::ofstream& trace, std::ostream& out, std::ostream& errors) const;
    ExitStatus report(Xml& document, board::BoardSession& session, board::ProgressWatch& watch,
                      std::ostream& out, std::ostream& errors) const;
    board::StartUpMonitor::Outcome bringUp(board::BoardSession& session, std::ostream& errors) const;
    ExitStatus explainFailure(std::string const& reason, std::string const& stall,
                              std::ostream& errors) const;
    ExitStatus acceptErrors(char const* what, std::ostream& errors) const;
    ExitStatus readBack(Xml& document, board::BoardSession& session, std::ostream& out,
                        std::ostream& errors) const;
    bool printStatistics(board::BoardSession& session, std::ostream& out, std::ostream& errors) const;
    void requireHardware() const;

    std::string _memoryDevice;
    DocumentChecks _checks;
    std::function<void(simulation::SimulatedBoard&)> _prepare;
    std::string _documentPath;
    bool _simulate = false;
    bool _noHardwareAccess = false;
    std::string _tracePath;
    std::optional<unsigned int> _logLevel;
    std::vector<std::string> _statistics;
    bool _misuse = false;
    bool _noVerify = false;
    bool _acceptErrors = false;
    unsigned _timeout = 10;
};

} // namespace switchctl::bringup
