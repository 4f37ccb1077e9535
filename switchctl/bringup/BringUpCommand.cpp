#include "switchctl/bringup/BringUpCommand.hpp"

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include "board/BoardReading.hpp"
#include "board/trace/BringUpTrace.hpp"
#include "chips/PortAddress.hpp"
#include "reference_host/StreamLog.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/bringup/BoardSummary.hpp"
#include "switchctl/bringup/MisuseList.hpp"
#include "switchctl/bringup/ReadBack.hpp"
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
    arguments.flag("--no-hardware-access", _noHardwareAccess,
                   "Create the switches without accessing any chip");
    arguments.option("--trace", _tracePath, "Write every register access of the chips to FILE").type("FILE");
    arguments
        .option("--log-level", _logLevel, "Show the library's messages, those with a level up to N (0 to 4)")
        .type("N")
        .range(0U, highestLogLevel);
    arguments.option("--statistics", _statistics, "Print the counters of a port; may be repeated")
        .type("SWITCH.PORT")
        .oneEach()
        .check(refuseOtherThanPortAddress);
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
}

std::string BringUpCommand::getHelp() const {
    return "First come the checks of \"switchctl check\". Afterwards the chips are read back: simulated "
           "ones\n"
           "completely, real ones as far as start-up writes, and each deviation from what start-up leaves "
           "in\n"
           "fresh models is reported.\n"
           "\n"
           "Examples:\n"
           "  switchctl bring-up board.xml --simulate\n"
           "  switchctl bring-up board.xml --simulate --misuse --timeout 60\n"
           "  switchctl bring-up board.xml --simulate --statistics 0.1 --trace trace.txt\n"
           "  switchctl bring-up board.xml --log-level 2\n"
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
            {ExitStatus::registerFailed, "what start-up did could not be read back completely"},
            {ExitStatus::errorsFound, "the library logged an error, or the checks found one"},
            {ExitStatus::notAsDetermined, "a chip is not as start-up determines"},
            {ExitStatus::noProgress, "start-up made no progress within the time of --timeout"}};
}

ExitStatus BringUpCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    requireHardware();
    std::ofstream trace;
    if (!_tracePath.empty()) {
        trace.open(_tracePath);
        if (!trace) {
            throw ToolError(ExitStatus::noTrace, _tracePath + ": " + std::generic_category().message(errno));
        }
    }
    FindingCounts const findings = _checks(*document);
    findings.print(out, _documentPath);
    ExitStatus const status = bringUp(*document, trace, out, errors);
    return status == ExitStatus::success && findings.errors > 0
               ? acceptErrors("the checks found errors", errors)
               : status;
}

ExitStatus BringUpCommand::bringUp(Xml& document, std::ofstream& trace, std::ostream& out,
                                   std::ostream& errors) const {
    std::unique_ptr<StreamLog> const log = makeLog(errors, _logLevel, !_simulate);
    board::BoardSession::Options options;
    options.simulate = _simulate;
    options.noHardwareAccess = _noHardwareAccess;
    options.memoryDevice = _memoryDevice;
    options.log = log.get();
    board::BoardReading const reading(document);
    board::ProgressWatch watch(reading, _timeout);
    std::optional<board::BringUpTrace> accesses;
    if (trace.is_open()) {
        accesses.emplace(trace, reading);
    }
    options.wrapMemory = [&](auto memory) {
        auto watched = watch.wrap(std::move(memory));
        return accesses ? accesses->wrap(std::move(watched)) : std::move(watched);
    };
    board::BoardSession session(document, options);
    if (_prepare && session.getBoard() != nullptr) {
        _prepare(*session.getBoard());
    }
    ExitStatus status = report(document, session, watch, out, errors);
    if (accesses) {
        accesses->finish();
        trace.close();
        if (!trace) {
            errors << prefix << _tracePath << ": the trace could not be written\n";
            status = status == ExitStatus::success ? ExitStatus::noTrace : status;
        }
    }
    if (status == ExitStatus::startUpFailed || status == ExitStatus::noProgress ||
        status == ExitStatus::switchMissing) {
        return status;
    }
    ExitStatus const asRead = readBack(document, session, out, errors);
    return asRead == ExitStatus::success ? status : asRead;
}

ExitStatus BringUpCommand::report(Xml& document, board::BoardSession& session, board::ProgressWatch& watch,
                                  std::ostream& out, std::ostream& errors) const {
    board::BoardReading const boardDocument(document);
    BoardSummary const summary(boardDocument, session);
    board::StartUpMonitor::Outcome const outcome = bringUp(session, errors);
    watch.stop();
    if (!outcome.populated) {
        summary.printComplaints(out);
        return explainFailure(outcome.reason, watch.getStall(), errors);
    }
    summary.print(out);
    if (_misuse) {
        printMisuse(out, session.getBoard()->getMisuse());
    }
    bool const statisticsRead = printStatistics(session, out, errors);
    summary.printComplaints(out);
    if (!session.isComplete(boardDocument)) {
        errors << prefix << _documentPath << ": "
               << (boardDocument.getWanted().empty() ? "no switch in the document"
                                                     : "not every switch came up")
               << '\n';
        return ExitStatus::switchMissing;
    }
    if (!statisticsRead) {
        return ExitStatus::noStatistics;
    }
    return session.getLog().hasErrors() ? acceptErrors("the library logged errors", errors)
                                        : ExitStatus::success;
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
        errors << prefix << "start-up failed: " << reason << '\n';
        return ExitStatus::startUpFailed;
    }
    errors << prefix << "start-up made no progress for " << _timeout << " s, waiting for " << stall << '\n';
    return ExitStatus::noProgress;
}

/// Whether the chips are as start-up leaves them.
ExitStatus BringUpCommand::readBack(Xml& document, board::BoardSession& session, std::ostream& out,
                                    std::ostream& errors) const {
    if (_noVerify || _noHardwareAccess) {
        out << "read back: no" << (_noVerify ? "" : ", no chip was accessed") << '\n';
        return ExitStatus::success;
    }
    std::optional<ReadBack> result;
    {
        Progress const progress(errors, "reading back the switches of " + _documentPath);
        result.emplace(document, _documentPath, session, _memoryDevice);
    }
    result->print(out);
    if (result->getStatus() != ExitStatus::success) {
        errors << prefix << _documentPath << ": a read of the chips does not show what start-up determines\n";
    }
    return result->getStatus();
}

board::StartUpMonitor::Outcome BringUpCommand::bringUp(board::BoardSession& session,
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
