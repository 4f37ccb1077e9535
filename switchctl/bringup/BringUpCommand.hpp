#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"
#include "board/PortStart.hpp"
#include "board/ProgressWatch.hpp"
#include "board/trace/BringUpTrace.hpp"
#include "host/Xml.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Faults.hpp"
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
    /// Where results go: as text when they are there, as JSON all at the end.
    struct Output {
        std::ostream& text;
        std::ostream& errors;
        nlohmann::ordered_json& json;
    };

    ExitStatus trace(reference_host::XmlDocument& document, std::ostream& out, std::ostream& errors) const;
    ExitStatus carryOut(reference_host::XmlDocument& document, board::BringUpTrace* trace, std::ostream& out,
                        std::ostream& errors) const;
    ExitStatus bringUp(reference_host::XmlDocument& document, board::BringUpTrace* trace,
                       Output const& output) const;
    ExitStatus report(Xml& document, board::BoardSession& session, board::ProgressWatch& watch,
                      board::BoardAccess::WrapMemory const& wrap, Output const& output) const;
    std::optional<board::PortStart> startPorts(board::BoardReading const& document,
                                               board::BoardSession& session,
                                               board::BoardAccess::WrapMemory const& wrap) const;
    static void print(board::PortStart const& ports, Output const& output);
    std::optional<chips::PortSettings::Speed> getStartSpeed() const;
    ExitStatus chooseStatus(board::BoardReading const& document, board::BoardSession& session,
                            bool statisticsRead, bool portsStarted, Output const& output) const;
    void printMisuse(simulation::SimulatedBoard& board, Output const& output) const;
    board::StartUpMonitor::Outcome start(board::BoardSession& session, std::ostream& errors) const;
    ExitStatus explainFailure(std::string const& reason, std::string const& stall,
                              std::ostream& errors) const;
    ExitStatus acceptErrors(char const* what, std::ostream& errors) const;
    ExitStatus readBack(Xml& document, board::BoardSession& session, Output const& output) const;
    bool printStatistics(board::BoardSession& session, std::ostream& out, std::ostream& errors) const;
    void requireHardware() const;

    std::string _memoryDevice;
    DocumentChecks _checks;
    std::function<void(simulation::SimulatedBoard&)> _prepare;
    std::string _documentPath;
    bool _simulate = false;
    Faults _faults;
    bool _noHardwareAccess = false;
    std::string _tracePath;
    std::optional<unsigned int> _logLevel;
    std::vector<std::string> _statistics;
    std::string _startPorts;
    bool _misuse = false;
    bool _noVerify = false;
    bool _acceptErrors = false;
    unsigned _timeout = 10;
};

} // namespace switchctl::bringup
