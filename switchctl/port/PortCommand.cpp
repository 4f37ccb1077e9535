#include "switchctl/port/PortCommand.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "board/ModelBringUp.hpp"
#include "board/Wording.hpp"
#include "chips/PortAddress.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/port/PortReport.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::port {

namespace {

constexpr unsigned longestTimeout = 86'400;

std::string complaintAboutPort(std::string const& text) {
    return chips::PortAddress::fromText(text) ? "" : "\"" + text + "\" is not of the form SWITCH.PORT";
}

} // namespace

PortCommand::PortCommand(std::string memoryDevice)
    : Command("port", "Start, stop or set a port of a board that runs"),
      _memoryDevice(std::move(memoryDevice)) {}

void PortCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("SWITCH.PORT", _port, "The port").required().check(complaintAboutPort);
    arguments
        .option("SETTING", _settings,
                "up, down, speed 10|100|1000 [full|half], flow-control on|off, mdix on|off|auto, "
                "learning on|off; several at once")
        .required();
    _simulation.addTo(arguments,
                      "Set it in chip models instead: those of BOARD.xml or of another document, after they "
                      "were brought up");
    arguments.flag("--yes", _yes, "Do write to the board; without it, only tell what would be set");
    arguments
        .option("--timeout", _timeout,
                "End when the chip makes no progress for so many seconds of board time")
        .type("SECONDS")
        .range(1U, longestTimeout)
        .showDefault();
    addJson(arguments);
}

std::string PortCommand::getHelp() const {
    return "There is no start-up: the library's port objects alone act, and the chips go on as they were "
           "but\n"
           "for the port. All settings of its chip are read before and afterwards, and what is another one\n"
           "then is shown. No table is read or written. Nothing else may use the chips meanwhile.\n"
           "\n"
           "What that does to a chip:\n"
           "  88E6096  up and down force the link, forward or disable the port, and power its PHY up or\n"
           "           down with a reset. A speed takes the link down first, and ends negotiation of link,\n"
           "           speed and duplex.\n"
           "  VSC7390  up and down open or close receiver and sender; a speed also drops what is queued\n"
           "           from the port and takes its MAC through reset. Each of them writes the source masks\n"
           "           of all ports anew: whatever port-based VLANs left there, each port that receives and\n"
           "           sends is opened to all others that do. Tag-based VLANs stay as they are.\n"
           "A speed comes with flow control on unless it is told to be off, and neither starts nor stops "
           "the\n"
           "port unless up or down is there, too. An external port of a VSC7390 is started by \"up speed "
           "...\"\n"
           "the first time: the library's start-up leaves it without a speed.\n"
           "\n"
           "Examples:\n"
           "  switchctl port board.xml 0.4 up speed 1000 --simulate\n"
           "  switchctl port board.xml 0.4 down --yes\n"
           "  switchctl port board.xml 0.4 speed 100 full flow-control off --yes\n"
           "  switchctl port board.xml 1.3 mdix auto --yes --json | jq '.changes[]'\n"
           "\n";
}

std::vector<Command::StatusLine> PortCommand::getStatuses() const {
    return {{ExitStatus::success, "all of it was set"},
            {ExitStatus::usage, "the command line is wrong, there is no such port, or it cannot be set so"},
            ExitStatus::badDocument,
            ExitStatus::noHardware,
            ExitStatus::startUpFailed,
            {ExitStatus::registerFailed, "a register could not be read or written"},
            {ExitStatus::notConfirmed, "nothing was written, as --yes was missing"},
            {ExitStatus::noProgress, "the chip made no progress within the time of --timeout"}};
}

ExitStatus PortCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = reference_host::XmlDocument::fromFile(_path);
    board::BoardReading const reading(*document);
    chips::PortAddress const port = chips::PortAddress::fromText(_port).value();
    chips::PortSettings const settings(_settings);
    Switch const& owner = findOwner(reading, port);
    settings.requirePossible(owner.kind->getFacts(), port);
    requireConsent(owner, settings);
    board::ProgressWatch watch(reading, _timeout);
    try {
        return change(owner, port, settings, watch, out, errors);
    } catch (std::runtime_error const&) {
        if (watch.getStall().empty()) {
            throw;
        }
        throw ToolError(ExitStatus::noProgress, _port + ": no progress for " + std::to_string(_timeout) +
                                                    " s, waiting for " + watch.getStall());
    }
}

PortCommand::Switch const& PortCommand::findOwner(board::BoardReading const& reading,
                                                  chips::PortAddress const& port) const {
    Switch const* const owner = reading.getSwitch(static_cast<int>(port.switchId));
    if (owner == nullptr) {
        throw ToolError(ExitStatus::usage, _port + ": " + _path + " has no switch " +
                                               std::to_string(port.switchId) + " of a kind that is known");
    }
    if (owner->findPort(port.portId) == nullptr) {
        throw ToolError(ExitStatus::usage, _port + ": " + _path + " has no such port");
    }
    return *owner;
}

void PortCommand::requireConsent(Switch const& owner, chips::PortSettings const& settings) const {
    if (_yes || _simulation.isChosen()) {
        return;
    }
    std::string const& sideEffect = owner.kind->getFacts().settings.sideEffect;
    throw ToolError(ExitStatus::notConfirmed,
                    "nothing was written, since --yes is missing; port " + _port +
                        " would have been set: " + board::listed(settings.getTexts()) +
                        (sideEffect.empty() || !settings.setsLink() ? "" : "\n  and " + sideEffect));
}

/// What the library prints meanwhile goes to `errors`.
ExitStatus PortCommand::change(Switch const& owner, chips::PortAddress const& port,
                               chips::PortSettings const& settings, board::ProgressWatch& watch,
                               std::ostream& out, std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    auto const wrap = [&watch](auto memory) { return watch.wrap(std::move(memory)); };
    if (!_simulation.isChosen()) {
        board::BoardAccess board(_memoryDevice, wrap);
        return report(board, owner, port, settings, out, errors);
    }
    board::ModelBringUp chips(_simulation.getPath(_path));
    board::BoardAccess board(chips.getBoard(), wrap);
    _simulation.strike(chips.getBoard());
    return report(board, owner, port, settings, out, errors);
}

ExitStatus PortCommand::report(board::BoardAccess& board, Switch const& owner, chips::PortAddress const& port,
                               chips::PortSettings const& settings, std::ostream& out,
                               std::ostream& errors) const {
    PortChange const change(board, owner, port, settings);
    std::string const examined =
        _simulation.isChosen() ? "the models of " + _simulation.getPath(_path) : "the board";
    PortReport const report(change, settings, port, owner.chipName(), examined);
    if (isJson()) {
        printWithTime(out, report.toJson());
    } else {
        report.print(out);
    }
    if (!change.getFailure().empty()) {
        errors << "switchctl: " << _port << ": not all of it was set: " << change.getFailure() << '\n';
        return ExitStatus::registerFailed;
    }
    if (!change.getUnread().empty()) {
        errors << "switchctl: " << _port << ": the chip could not be read completely\n";
        return ExitStatus::registerFailed;
    }
    return ExitStatus::success;
}

} // namespace switchctl::port
