#include "switchctl/Program.hpp"

#include <unistd.h>

#include <iostream>

#include "reference_host/DeviceLock.hpp"
#include "reference_host/InputFile.hpp"
#include "switchctl/audit/AuditCommand.hpp"
#include "switchctl/bringup/BringUpCommand.hpp"
#include "switchctl/check/CheckCommand.hpp"
#include "switchctl/check/DocumentCheck.hpp"
#include "switchctl/completion/CompletionCommand.hpp"
#include "switchctl/controller/SimulateControllerCommand.hpp"
#include "switchctl/doctor/DoctorCommand.hpp"
#include "switchctl/draw/DrawCommand.hpp"
#include "switchctl/explain/ExplainCommand.hpp"
#include "switchctl/faults/FaultsCommand.hpp"
#include "switchctl/new/NewCommand.hpp"
#include "switchctl/paths/PathsCommand.hpp"
#include "switchctl/plan/PlanCommand.hpp"
#include "switchctl/port/PortCommand.hpp"
#include "switchctl/register/RegisterCommand.hpp"
#include "switchctl/replay/ReplayCommand.hpp"
#include "switchctl/statistics/StatisticsCommand.hpp"
#include "switchctl/status/StatusCommand.hpp"
#include "switchctl/table/TableCommand.hpp"
#include "switchctl/terminal/Terminal.hpp"

namespace switchctl {

using reference_host::InputFile;

namespace {

constexpr std::size_t bytesPerMebibyte = 1U << 20U;
constexpr unsigned mostMebibytes = 2047; // of an XML parser that counts in an int

constexpr char const* help = "Examples, on a desk; on a board, without --simulate:\n"
                             "  switchctl check board.xml\n"
                             "  switchctl paths board.xml\n"
                             "  switchctl explain board.xml 0.1 to 0.10\n"
                             "  switchctl plan board.xml\n"
                             "  switchctl draw board.xml -o board.svg\n"
                             "  switchctl bring-up board.xml --simulate\n"
                             "  switchctl audit board.xml --simulate\n"
                             "  switchctl status board.xml --simulate\n"
                             "  switchctl table board.xml vlans --simulate\n"
                             "  switchctl statistics board.xml --simulate\n"
                             "\"switchctl help COMMAND\", or --help behind a command, has more, and its exit "
                             "statuses. Those of bring-up:\n"
                             "\n";

bringup::FindingCounts countFindings(reference_host::XmlDocument& document) {
    using check::Severity;
    check::DocumentCheck const found(document);
    return {found.count(Severity::error), found.count(Severity::warning), found.count(Severity::note)};
}

} // namespace

// In the order of the help.
Program::Program(std::string const& memoryDevice) {
    _commands.push_back(std::make_unique<bringup::BringUpCommand>(memoryDevice, countFindings));
    _commands.push_back(std::make_unique<port::PortCommand>(memoryDevice));
    _commands.push_back(std::make_unique<registers::RegisterCommand>(memoryDevice));
    _commands.push_back(
        std::make_unique<draft::NewCommand>(Terminal::isAt(STDIN_FILENO) ? &std::cin : nullptr));
    _commands.push_back(std::make_unique<check::CheckCommand>());
    _commands.push_back(std::make_unique<draw::DrawCommand>());
    _commands.push_back(std::make_unique<paths::PathsCommand>(memoryDevice));
    _commands.push_back(std::make_unique<explain::ExplainCommand>(memoryDevice));
    _commands.push_back(std::make_unique<plan::PlanCommand>());
    _commands.push_back(std::make_unique<audit::AuditCommand>(memoryDevice));
    _commands.push_back(std::make_unique<doctor::DoctorCommand>(memoryDevice));
    _commands.push_back(std::make_unique<status::StatusCommand>(memoryDevice));
    _commands.push_back(std::make_unique<table::TableCommand>(memoryDevice));
    _commands.push_back(std::make_unique<statistics::StatisticsCommand>(memoryDevice));
    _commands.push_back(std::make_unique<replay::ReplayCommand>());
    _commands.push_back(std::make_unique<controller::SimulateControllerCommand>());
    _commands.push_back(std::make_unique<faults::FaultsCommand>());
}

ExitStatus Program::run(std::vector<std::string> const& words, std::ostream& out, std::ostream& errors) {
    ExitStatus const status = choose(words, out, errors);
    if (out.flush()) {
        return status;
    }
    errors << "switchctl: standard output: could not be written completely\n";
    return ExitStatus::outputLost;
}

ExitStatus Program::choose(std::vector<std::string> const& words, std::ostream& out, std::ostream& errors) {
    Arguments arguments("switchctl", "Brings up and inspects the Ethernet switches of a board",
                        help + _commands.front()->explainStatuses());
    arguments.version("switchctl " SWITCHCTL_VERSION);
    auto inputLimit = static_cast<unsigned>(InputFile::usualLimit / bytesPerMebibyte);
    arguments.option("--input-limit", inputLimit, "Largest document, trace or dump that is read")
        .type("MIB")
        .range(1U, mostMebibytes)
        .showDefault();
    reference_host::DeviceLock::Policy turn;
    bool noWait = false;
    arguments.flag("--no-wait", noWait, "Refuse at once when another process uses the board's chips");
    arguments.flag("--steal", turn.steals,
                   "Use the chips although the process that used them has ended and left them locked");
    for (auto const& command : _commands) {
        command->addTo(arguments);
    }
    std::vector<std::string> explained;
    Arguments explain = arguments.subcommand("help", "Explain a command");
    explain.option("COMMAND", explained, "The command");
    completion::CompletionCommand completion(arguments);
    completion.addTo(arguments);
    explain.footer("Example:\n  switchctl help register read\n");
    if (auto const status = arguments.parse(words, out, errors)) {
        return *status;
    }
    turn.waits = !noWait;
    turn.say = [&errors](std::string const& line) { errors << "switchctl: " << line << std::endl; };
    reference_host::DeviceLock::setPolicy(turn);
    InputFile::setLimit(std::size_t{inputLimit} * bytesPerMebibyte);
    for (auto const& command : _commands) {
        if (command->isChosen()) {
            return command->run(out, errors);
        }
    }
    return completion.run(out, errors);
}

} // namespace switchctl
