#pragma once

#include <CLI/CLI.hpp>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/BoardSession.hpp"
#include "chips/ExitStatus.hpp"
#include "host/Xml.hpp"
#include "reference_host/DeviceMemory.hpp"

namespace switchctl::bringup {

/// `switchctl bring-up`: brings a board's switches up and tells what became of them.
class BringUpCommand {
public:
    /// Adds the command to the program's command line.
    /// \param memoryDevice where hardware is reached.
    explicit BringUpCommand(CLI::App& program,
                            std::string memoryDevice = reference_host::DeviceMemory::defaultDevicePath);
    BringUpCommand(BringUpCommand const&) = delete;
    BringUpCommand& operator=(BringUpCommand const&) = delete;

    /// Whether the parsed command line asks for it.
    bool isChosen() const;

    /// \param out gets the summary and the statistics.
    /// \param errors gets the reason of a refusal, and the messages that --log-level asks for.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    chips::ExitStatus bringUp(Xml& document, std::ofstream& trace, std::ostream& out,
                              std::ostream& errors) const;
    chips::ExitStatus report(Xml& document, board::BoardSession& session, std::ostream& out,
                             std::ostream& errors) const;
    board::StartUpMonitor::Outcome bringUp(board::BoardSession& session, std::ostream& errors) const;
    bool printStatistics(board::BoardSession& session, std::ostream& out, std::ostream& errors) const;
    bool hardwareIsReachable(std::ostream& errors) const;

    CLI::App* _command;
    std::string _memoryDevice;
    std::string _documentPath;
    bool _simulate = false;
    bool _noHardwareAccess = false;
    std::string _tracePath;
    std::optional<unsigned int> _logLevel;
    std::vector<std::string> _statistics;
};

} // namespace switchctl::bringup
