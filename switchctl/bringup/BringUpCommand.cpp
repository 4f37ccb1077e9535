#include "switchctl/bringup/BringUpCommand.hpp"

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "board/BoardReading.hpp"
#include "board/OutputFile.hpp"
#include "board/StartUpFailure.hpp"
#include "chips/PortAddress.hpp"
#include "reference_host/StreamLog.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/bringup/BoardSummary.hpp"
#include "switchctl/bringup/MisuseList.hpp"
#include "switchctl/bringup/ReadBack.hpp"
#include "switchctl/bringup/SummaryJson.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::bringup {

using reference_host::DeviceMemory;
using reference_host::StreamLog;
using reference_host::XmlDocument;

namespace {

constexpr char const* prefix = "switchctl: ";
constexpr unsigned int highestLogLevel = 4;
constexpr unsigned longestTimeout = 86'400;

std::string refuseOtherThanPortAddress(std::string const& text) {
    return chips::PortAddress::fromText(text) ? "" : "\"" + text + "\" is not of the form SWITCH.PORT";
}

/// Simulated time is no time of day, so lines about it carry none.
std::unique_ptr<StreamLog> makeLog(std::ostream& out, std::optional<unsigned int> level, bool timeStamps) {
    if (!level) {
        return nullptr;
    }
    StreamLog::Options options;
    options.highestLevel = *level;
    options.timeStamps = timeStamps;
    return std::make_unique<StreamLog>(out, options);
}

} // namespace

BringUpCommand::BringUpCommand(std::string memoryDevice, DocumentChecks checks,
                               std::function<void(simulation::SimulatedBoard&)> prepare)
    : Command("bring-up", "Bring up the switches of a board"),
      _memoryDevice(std::move(memoryDevice)),
      _checks(std::move(checks)),
      _prepare(std::move(prepare)) {}

void BringUpCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _documentPath, "Configuration document of the board").required();
    auto const simulate =
        arguments.flag("--simulate", _simulate, "Use chip models instead of the board's hardware");
    _faults.addTo(arguments).needs(simulate);
    arguments.flag("--no-hardware-access", _noHardwareAccess,
                   "Create the switches without accessing any chip");
    arguments
        .option(
            "--trace", _tracePath,
            "Write every register access of the chips to FILE; \"-\" is the standard output, and the summary "
            "then goes to standard error")
        .type("FILE");
    arguments
        .option("--log-level", _logLevel, "Show the library's messages, those with a level up to N (0 to 4)")
        .type("N")
        .range(0U, highestLogLevel);
    arguments.option("--statistics", _statistics, "Print the counters of a port; may be repeated")
        .type("SWITCH.PORT")
        .oneEach()
        .check(refuseOtherThanPortAddress);
    arguments
        .flag(
            "--start-ports", _startPorts,
            "Afterwards, have the library start the ports that the document has forwarding and that are not "
            "up; those of a VSC7390 at so many Mbit/s, 1000 without a number")
        .type("[=SPEED]")
        .excludes(arguments.get("--no-hardware-access"));
    arguments.flag("--misuse", _misuse, "List what the drivers did that the chips' makers do not foresee")
        .needs(simulate);
    arguments.flag("--no-verify", _noVerify, "Do not read back what start-up did");
    arguments.flag("--accept-errors", _acceptErrors,
                   "End well although the library logged errors or the checks found some");
    arguments
        .option("--timeout", _timeout,
                "End when start-up makes no progress for so many seconds of board time")
        .type("SECONDS")
        .range(1U, longestTimeout)
        .showDefault();
    addJson(arguments);
    arguments.finally([this] {
        if (!_startPorts.empty() && !getStartSpeed()) {
            throw Arguments::Wrong("--start-ports: \"" + _startPorts + "\" is none of 10, 100, 1000");
        }
        if (isJson() && !_statistics.empty()) {
            throw Arguments::Wrong(
                "--statistics: a text of the library; for JSON, see \"switchctl statistics\"");
        }
    });
}

std::string BringUpCommand::getHelp() const {
    return "First come the checks of \"switchctl check\". Afterwards the chips are read back: simulated "
           "ones\n"
           "completely, real ones as far as start-up writes, and each deviation from what start-up leaves "
           "in\n"
           "fresh models is reported.\n"
           "\n"
           "Of a VSC7390, start-up leaves all ports stopped that are no smac, hmac or switchInterlink: to\n"
           "start them is up to the host, or to --start-ports, full duplex and with flow control. As any\n"
           "start of a VSC7390's port, that opens each port that is up to all others that are, whatever\n"
           "port-based VLANs left closed.\n"
           "\n"
           "Examples:\n"
           "  switchctl bring-up board.xml --simulate\n"
           "  switchctl bring-up board.xml --simulate --start-ports\n"
           "  switchctl bring-up board.xml --simulate --misuse --timeout 60\n"
           "  switchctl bring-up board.xml --simulate --statistics 0.1 --trace trace.txt\n"
           "  switchctl bring-up board.xml --log-level 2\n"
           "  switchctl bring-up board.xml --json | jq '.switches[] | select(.found | not)'\n"
           "\n";
}

std::vector<Command::StatusLine> BringUpCommand::getStatuses() const {
    return {{ExitStatus::success, "every switch of the document came up"},
            {ExitStatus::switchMissing, "a switch of the document is missing, or the document has no switch"},
            ExitStatus::usage,
            ExitStatus::badDocument,
            ExitStatus::noHardware,
            {ExitStatus::startUpFailed, "start-up ended before the switches were ready"},
            {ExitStatus::noStatistics, "the statistics of a port could not be read"},
            ExitStatus::noTrace,
            {ExitStatus::registerFailed,
             "what start-up did could not be read back completely, or a port could not be started"},
            {ExitStatus::errorsFound, "the library logged an error, or the checks found one"},
            {ExitStatus::notAsDetermined, "a chip is not as start-up determines"},
            {ExitStatus::noProgress, "start-up made no progress within the time of --timeout"}};
}

ExitStatus BringUpCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    requireHardware();
    return _tracePath.empty() ? carryOut(*document, nullptr, out, errors) : trace(*document, out, errors);
}

ExitStatus BringUpCommand::trace(XmlDocument& document, std::ostream& out, std::ostream& errors) const {
    board::OutputFile file(_tracePath, out, ExitStatus::noTrace);
    board::BringUpTrace accesses(file.getStream(), board::BoardReading(document));
    // Nothing gets between the lines of a trace.
    bool const isShared = board::OutputFile::isStandardOutput(_tracePath);
    ExitStatus status = ExitStatus::startUpFailed;
    try {
        status = carryOut(document, &accesses, isShared ? errors : out, errors);
    } catch (...) {
        accesses.finish();
        file.finishAnyway();
        throw;
    }
    try {
        file.finish();
    } catch (ToolError const& error) {
        errors << prefix << error.what() << '\n';
        return status == ExitStatus::success ? ExitStatus::noTrace : status;
    }
    return status;
}

ExitStatus BringUpCommand::carryOut(XmlDocument& document, board::BringUpTrace* trace, std::ostream& out,
                                    std::ostream& errors) const {
    FindingCounts const findings = _checks(document);
    std::ostringstream unused;
    nlohmann::ordered_json json{{"file", _documentPath}, {"checks", findings.toJson()}};
    Output const output{isJson() ? unused : out, errors, json};
    findings.print(output.text, _documentPath);
    ExitStatus const status = bringUp(document, trace, output);
    if (isJson()) {
        printWithTime(out, json);
    }
    return status == ExitStatus::success && findings.errors > 0
               ? acceptErrors("the checks found errors", errors)
               : status;
}

ExitStatus BringUpCommand::bringUp(XmlDocument& document, board::BringUpTrace* trace,
                                   Output const& output) const {
    std::unique_ptr<StreamLog> const log = makeLog(output.errors, _logLevel, !_simulate);
    board::BoardSession::Options options;
    options.simulate = _simulate;
    options.noHardwareAccess = _noHardwareAccess;
    options.memoryDevice = _memoryDevice;
    options.log = log.get();
    board::ProgressWatch watch(board::BoardReading(document), _timeout);
    options.wrapMemory = [&](auto memory) {
        auto watched = watch.wrap(std::move(memory));
        return trace != nullptr ? trace->wrap(std::move(watched)) : std::move(watched);
    };
    board::BoardSession session(document, options);
    if (session.getBoard() != nullptr) {
        if (_prepare) {
            _prepare(*session.getBoard());
        }
        _faults.strike(*session.getBoard());
    }
    ExitStatus const status = report(document, session, watch, options.wrapMemory, output);
    if (trace != nullptr) {
        trace->finish();
    }
    if (status == ExitStatus::startUpFailed || status == ExitStatus::noProgress ||
        status == ExitStatus::switchMissing) {
        return status;
    }
    ExitStatus const asRead = readBack(document, session, output);
    return asRead == ExitStatus::success ? status : asRead;
}

ExitStatus BringUpCommand::report(Xml& document, board::BoardSession& session, board::ProgressWatch& watch,
                                  board::BoardAccess::WrapMemory const& wrap, Output const& output) const {
    board::BoardReading const reading(document);
    BoardSummary const summary(reading, session);
    board::StartUpMonitor::Outcome outcome = start(session, output.errors);
    std::optional<board::PortStart> ports;
    try {
        if (outcome.populated && session.isComplete(reading)) {
            ports = startPorts(reading, session, wrap);
        }
    } catch (std::runtime_error const& error) {
        if (watch.getStall().empty()) {
            throw;
        }
        outcome = {false, error.what()};
    }
    watch.stop();
    output.json.update(SummaryJson(reading, session).get(outcome));
    if (!outcome.populated) {
        summary.printComplaints(output.text);
        return explainFailure(outcome.reason, watch.getStall(), output.errors);
    }
    summary.print(output.text);
    if (ports) {
        print(*ports, output);
    }
    if (_misuse) {
        printMisuse(*session.getBoard(), output);
    }
    bool const statisticsRead = printStatistics(session, output.text, output.errors);
    summary.printComplaints(output.text);
    return chooseStatus(reading, session, statisticsRead, !ports || ports->getFailures().empty(), output);
}

ExitStatus BringUpCommand::chooseStatus(board::BoardReading const& document, board::BoardSession& session,
                                        bool statisticsRead, bool portsStarted, Output const& output) const {
    if (!session.isComplete(document)) {
        output.errors << prefix << _documentPath << ": "
                      << (document.getWanted().empty() ? "no switch in the document"
                                                       : "not every switch came up")
                      << '\n';
        return ExitStatus::switchMissing;
    }
    if (!portsStarted) {
        output.errors << prefix << _documentPath << ": not every port could be started\n";
        return ExitStatus::registerFailed;
    }
    if (!statisticsRead) {
        return ExitStatus::noStatistics;
    }
    return session.getLog().hasErrors() ? acceptErrors("the library logged errors", output.errors)
                                        : ExitStatus::success;
}

std::optional<chips::PortSettings::Speed> BringUpCommand::getStartSpeed() const {
    return chips::PortSettings::speedOf(_startPorts == "true" ? "1000" : _startPorts);
}

std::optional<board::PortStart> BringUpCommand::startPorts(board::BoardReading const& document,
                                                           board::BoardSession& session,
                                                           board::BoardAccess::WrapMemory const& wrap) const {
    auto const speed = getStartSpeed();
    if (!speed) {
        return std::nullopt;
    }
    if (simulation::SimulatedBoard* const simulated = session.getBoard()) {
        board::BoardAccess chips(*simulated, wrap);
        return board::PortStart(document, chips, *speed);
    }
    board::BoardAccess chips(_memoryDevice, wrap);
    return board::PortStart(document, chips, *speed);
}

void BringUpCommand::print(board::PortStart const& ports, Output const& output) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    output.text << "start of forwarding ports\n";
    auto const list = [&](char const* heading, char const* outcome,
                          std::vector<chips::PortAddress> const& addresses) {
        output.text << heading << (addresses.empty() ? " none" : "");
        for (chips::PortAddress const& port : addresses) {
            output.text << ' ' << port;
            json.push_back({{"switch", port.switchId}, {"port", port.portId}, {"outcome", outcome}});
        }
        output.text << '\n';
    };
    list("  started:  ", "started", ports.getStarted());
    list("  up before:", "upBefore", ports.getUpBefore());
    for (board::PortStart::Failure const& failure : ports.getFailures()) {
        output.text << "  failed:    " << failure.port << ", " << failure.reason << '\n';
        json.push_back({{"switch", failure.port.switchId},
                        {"port", failure.port.portId},
                        {"outcome", "failed"},
                        {"reason", failure.reason}});
    }
    output.json["startedPorts"] = json;
}

void BringUpCommand::printMisuse(simulation::SimulatedBoard& board, Output const& output) const {
    std::vector<std::string> const lines = linesOfMisuse(board.getMisuse());
    for (std::string const& line : lines) {
        output.text << "  " << line << '\n';
    }
    output.json["misuse"] = lines;
}

ExitStatus BringUpCommand::acceptErrors(char const* what, std::ostream& errors) const {
    if (_acceptErrors) {
        return ExitStatus::success;
    }
    errors << prefix << _documentPath << ": " << what << " (--accept-errors accepts them)\n";
    return ExitStatus::errorsFound;
}

ExitStatus BringUpCommand::explainFailure(std::string const& reason, std::string const& stall,
                                          std::ostream& errors) const {
    if (stall.empty()) {
        errors << prefix << board::startUpFailureText(_documentPath, reason) << '\n';
        return ExitStatus::startUpFailed;
    }
    errors << prefix << "start-up made no progress for " << _timeout << " s, waiting for " << stall << '\n';
    return ExitStatus::noProgress;
}

/// Whether the chips are as start-up leaves them.
ExitStatus BringUpCommand::readBack(Xml& document, board::BoardSession& session, Output const& output) const {
    if (_noVerify || _noHardwareAccess) {
        output.text << "read back: no" << (_noVerify ? "" : ", no chip was accessed") << '\n';
        output.json["readBack"] = nullptr;
        return ExitStatus::success;
    }
    std::optional<ReadBack> result;
    {
        Progress const progress(output.errors, "reading back the switches of " + _documentPath);
        result.emplace(document, _documentPath, session, _memoryDevice, getStartSpeed());
    }
    result->print(output.text);
    output.json["readBack"] = result->toJson();
    if (result->getStatus() != ExitStatus::success) {
        output.errors << prefix << _documentPath
                      << ": a read of the chips does not show what start-up determines\n";
    }
    return result->getStatus();
}

board::StartUpMonitor::Outcome BringUpCommand::start(board::BoardSession& session,
                                                     std::ostream& errors) const {
    std::optional<Progress> progress;
    // Messages tell how far it is, too.
    if (!_logLevel) {
        progress.emplace(errors, "bringing up the switches of " + _documentPath);
    }
    return session.bringUp();
}

bool BringUpCommand::printStatistics(board::BoardSession& session, std::ostream& out,
                                     std::ostream& errors) const {
    bool allRead = true;
    for (std::string const& text : _statistics) {
        chips::PortAddress const port = chips::PortAddress::fromText(text).value();
        out << "statistics of port " << port << '\n';
        if (!session.writeStatistics(port, out)) {
            out << "  not available\n";
            errors << prefix << "the statistics of port " << port << " could not be read\n";
            allRead = false;
        }
    }
    return allRead;
}

void BringUpCommand::requireHardware() const {
    std::string reason;
    if (!_simulate && !_noHardwareAccess && !DeviceMemory::isAccessible(_memoryDevice, reason)) {
        throw ToolError(ExitStatus::noHardware,
                        reason + " (the switches are reached through this device; see --simulate)");
    }
}

} // namespace switchctl::bringup
