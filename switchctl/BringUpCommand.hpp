#pragma once

#include <CLI/CLI.hpp>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "host/Xml.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/BoardSession.hpp"
#include "switchctl/ExitStatus.hpp"

namespace switchctl {

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
    ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    ExitStatus bringUp(Xml& document, std::ofstream& trace, std::ostream& out, std::ostream& errors) const;
    ExitStatus report(Xml& document, BoardSession& session, std::ostream& out, std::ostream& errors) const;
    StartUpMonitor::Outcome bringUp(BoardSession& session, std::ostream& errors) const;
    bool printStatistics(BoardSession& session, std::ostream& out, std::ostream& errors) const;
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

} // namespace switchctl
