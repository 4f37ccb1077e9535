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
#include "switchctl/bringup/SummaryJson.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::bringup {

using reference_host::DeviceMemory;
using reference_host::StreamLog;
using reference_host::XmlDocument;

namespace {

constexpr char const* prefix = "switchctl: ";
constexpr unsigned int highestLogLevel = 4;

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

BringUpCommand::BringUpCommand(std::string memoryDevice)
    : Command("bring-up", "Bring up the switches of a board"), _memoryDevice(std::move(memoryDevice)) {}

void BringUpCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _documentPath, "Configuration document of the board").required();
    arguments.flag("--simulate", _simulate, "Use chip models instead of the board's hardware");
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
    addJson(arguments);
    arguments.finally([this] {
        if (isJson() && !_statistics.empty()) {
            throw Arguments::Wrong(
                "--statistics: a text of the library; for JSON, see \"switchctl statistics\"");
        }
    });
}

std::string BringUpCommand::getHelp() const {
    return "Examples:\n"
           "  switchctl bring-up board.xml --simulate\n"
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
            ExitStatus::noTrace};
}

ExitStatus BringUpCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    requireHardware();
    return _tracePath.empty() ? bringUp(*document, nullptr, out, errors) : trace(*document, out, errors);
}

ExitStatus BringUpCommand::trace(Xml& document, std::ostream& out, std::ostream& errors) const {
    board::OutputFile file(_tracePath, out, ExitStatus::noTrace);
    board::BringUpTrace accesses(file.getStream(), board::BoardReading(document));
    // Nothing gets between the lines of a trace.
    bool const isShared = board::OutputFile::isStandardOutput(_tracePath);
    ExitStatus status = ExitStatus::startUpFailed;
    try {
        status = bringUp(document, &accesses, isShared ? errors : out, errors);
    } catch (...) {
        accesses.finish();
        file.finishAnyway();
        throw;
    }
    accesses.finish();
    try {
        file.finish();
    } catch (ToolError const& error) {
        errors << prefix << error.what() << '\n';
        return status == ExitStatus::success ? ExitStatus::noTrace : status;
    }
    return status;
}

ExitStatus BringUpCommand::bringUp(Xml& document, board::BringUpTrace* trace, std::ostream& out,
                                   std::ostream& errors) const {
    std::unique_ptr<StreamLog> const log = makeLog(errors, _logLevel, !_simulate);
    board::BoardSession::Options options;
    options.simulate = _simulate;
    options.noHardwareAccess = _noHardwareAccess;
    options.memoryDevice = _memoryDevice;
    options.log = log.get();
    if (trace != nullptr) {
        options.wrapMemory = [trace](auto memory) { return trace->wrap(std::move(memory)); };
    }
    board::BoardSession session(document, options);
    return report(document, session, out, errors);
}

ExitStatus BringUpCommand::report(Xml& document, board::BoardSession& session, std::ostream& out,
                                  std::ostream& errors) const {
    board::BoardReading const boardDocument(document);
    BoardSummary const summary(boardDocument, session);
    board::StartUpMonitor::Outcome const outcome = bringUp(session, errors);
    if (isJson()) {
        printAsJson(boardDocument, session, outcome, out);
    }
    // Both say the same.
    std::ostringstream unused;
    std::ostream& text = isJson() ? unused : out;
    if (!outcome.populated) {
        summary.printComplaints(text);
        errors << prefix << board::startUpFailureText(_documentPath, outcome.reason) << '\n';
        return ExitStatus::startUpFailed;
    }
    summary.print(text);
    bool const statisticsRead = printStatistics(session, text, errors);
    summary.printComplaints(text);
    if (!session.isComplete(boardDocument)) {
        errors << prefix << _documentPath << ": "
               << (boardDocument.getWanted().empty() ? "no switch in the document"
                                                     : "not every switch came up")
               << '\n';
        return ExitStatus::switchMissing;
    }
    return statisticsRead ? ExitStatus::success : ExitStatus::noStatistics;
}

void BringUpCommand::printAsJson(board::BoardReading const& document, board::BoardSession& session,
                                 board::StartUpMonitor::Outcome const& outcome, std::ostream& out) const {
    nlohmann::ordered_json json{{"file", _documentPath}};
    json.update(SummaryJson(document, session).get(outcome));
    printWithTime(out, json);
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
