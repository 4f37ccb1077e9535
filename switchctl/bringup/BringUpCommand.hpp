#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"
#include "board/trace/BringUpTrace.hpp"
#include "host/Xml.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/Command.hpp"

namespace switchctl::bringup {

/// `switchctl bring-up`: brings a board's switches up and tells what became of them.
class BringUpCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit BringUpCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    ExitStatus trace(Xml& document, std::ostream& out, std::ostream& errors) const;
    ExitStatus bringUp(Xml& document, board::BringUpTrace* trace, std::ostream& out,
                       std::ostream& errors) const;
    ExitStatus report(Xml& document, board::BoardSession& session, std::ostream& out,
                      std::ostream& errors) const;
    board::StartUpMonitor::Outcome bringUp(board::BoardSession& session, std::ostream& errors) const;
    void printAsJson(board::BoardReading const& document, board::BoardSession& session,
                     board::StartUpMonitor::Outcome const& outcome, std::ostream& out) const;
    bool printStatistics(board::BoardSession& session, std::ostream& out, std::ostream& errors) const;
    void requireHardware() const;

    std::string _memoryDevice;
    std::string _documentPath;
    bool _simulate = false;
    bool _noHardwareAccess = false;
    std::string _tracePath;
    std::optional<unsigned int> _logLevel;
    std::vector<std::string> _statistics;
};

} // namespace switchctl::bringup
