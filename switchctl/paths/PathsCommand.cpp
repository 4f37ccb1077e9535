#include "switchctl/paths/PathsCommand.hpp"

#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "board/ModelBringUp.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/Cables.hpp"
#include "board/paths/PathComparison.hpp"
#include "board/paths/StationComparison.hpp"
#include "board/paths/WatchedStartUp.hpp"
#include "chips/PortAddress.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/paths/PathsReport.hpp"
#include "switchctl/paths/StartingReport.hpp"
#include "switchctl/paths/StationsReport.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::paths {

namespace {

using board::PathComparison;
using board::RegisterPaths;

template <typename Report> ExitStatus statusOf(Report const& report) {
    if (report.count(Severity::error) != 0) {
        return ExitStatus::badDocument;
    }
    return report.count(Severity::warning) != 0 ? ExitStatus::documentWarnings : ExitStatus::success;
}

std::string complaintAboutPort(std::string const& text) {
    return chips::PortAddress::fromText(text) ? "" : "\"" + text + "\" is not of the form SWITCH.PORT";
}

/// All ports of all chips, or the ports that are named.
PathComparison::Selection selectionOf(RegisterPaths const& registers, std::vector<std::string> const& named) {
    PathComparison::Selection selection;
    if (named.empty()) {
        for (auto const& [id, chip] : registers.getChips()) {
            selection.emplace(id, ~board::PortSet{0});
        }
    }
    for (std::string const& text : named) {
        auto const port = *chips::PortAddress::fromText(text);
        auto const chip = registers.getChips().find(port.switchId);
        if (chip == registers.getChips().end() || port.portId >= chip->second->getNumberOfPorts()) {
            throw ToolError(ExitStatus::usage, "the board has no port " + text);
        }
        selection[port.switchId] |= board::PortSet{1} << port.portId;
    }
    return selection;
}

std::vector<board::StationComparison::Line>
stationsOf(board::Intent const& intent, RegisterPaths const& registers, board::AskedFrames const& frames,
           board::Cables const& cables, PathComparison::Selection const& selection) {
    if (cables.isEmpty()) {
        return {};
    }
    return board::StationComparison(intent, registers, frames, cables, selection).getLines();
}

} // namespace

PathsCommand::PathsCommand(std::string memoryDevice)
    : Command("paths", "Show who reaches whom, and who should not"), _live(std::move(memoryDevice)) {}

void PathsCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    auto const between = arguments.option("--between", _between, "Between these two ports only")
                             .type("SWITCH.PORT")
                             .values(2)
                             .check(complaintAboutPort);
    auto const cable =
        arguments
            .option("--cable", _cables,
                    "A cable between two ports, beside those that the document has in connectsTo. May be "
                    "repeated")
            .type("SWITCH.PORT=SWITCH.PORT")
            .oneEach();
    _live.addTo(arguments);
    auto const whileStarting = arguments
                                   .flag("--while-starting", _whileStarting,
                                         "Show what is open for a while as a bring-up writes register by "
                                         "register, and nobody wants")
                                   .excludes(between)
                                   .excludes(cable)
                                   .excludes(arguments.get("--live"))
                                   .excludes(arguments.get("--from"));
    arguments
        .option("--warm", _oldPath,
                "With --while-starting: on chips that a bring-up of this document has left, not on chips "
                "after a reset. What this document allows is wanted, too")
        .type("OLD.xml")
        .needs(whileStarting);
    addJson(arguments);
}

std::string PathsCommand::getHelp() const {
    return "Each port is asked where frames go that it gets: untagged, with VID 0, VID 1, those of the\n"
           "document and one that it does not name, to an unknown station, to all and to each group. The\n"
           "answer comes from the registers of chip models that the document was brought up on, with all\n"
           "links plugged in, and is compared with what the document alone asks for. Over cables, frames "
           "are\n"
           "also followed from station to station. --live reads the chips as an audit does; what cannot be\n"
           "read without disturbing them, learned addresses above all, counts as after a reset.\n"
           "--from takes dumps of the chips, one a switch, in place of the chips; a switch without one is "
           "unread\n"
           "and not in the answer. A dump of PHYs tells which are powered down; trunks of an 88E6096\n"
           "are in no dump and count as after a reset.\n"
           "--while-starting asks anew after every register write, of chips after a reset or, with --warm,\n"
           "of those that another bring-up has left, and tells from which write to which a path is open\n"
           "that no document allows and that was closed before. What is still open in the end is only\n"
           "counted.\n"
           "\n"
           "Examples:\n"
           "  switchctl paths board.xml\n"
           "  switchctl paths board.xml --between 0.1 0.10\n"
           "  switchctl paths board.xml --cable 0.10=3.20 --cable 1.10=3.21\n"
           "  switchctl paths board.xml --live\n"
           "  switchctl paths board.xml --from switch0.txt --from switch1.txt\n"
           "  switchctl paths board.xml --while-starting --warm board.xml\n"
           "  switchctl paths board.xml --json | jq '.differences[] | select(.kind == \"leak\")'\n"
           "\n";
}

std::vector<Command::StatusLine> PathsCommand::getStatuses() const {
    return {{ExitStatus::success, "frames go where the document wants them"},
            {ExitStatus::usage, "the command line is wrong, or the board has no such port"},
            {ExitStatus::badDocument,
             "frames go where they must not or with wrong tags, the document contradicts itself, or it or "
             "a dump cannot be read, is not well-formed or lacks something"},
            ExitStatus::noHardware,
            ExitStatus::startUpFailed,
            {ExitStatus::registerFailed, "a chip could not be read completely"},
            {ExitStatus::documentWarnings,
             "frames do not go where they must, go where a port is not forwarding, or, with "
             "--while-starting, go for a while where they must not"}};
}

ExitStatus PathsCommand::watch(std::ostream& out, std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    std::optional<Progress> progress(std::in_place, errors, "asking the models of " + _path);
    board::WatchedStartUp const startUp(_path, _oldPath);
    StartingReport const report(_path, _oldPath, startUp);
    progress.reset();
    if (isJson()) {
        print(out, report.toJson());
    } else {
        report.print(out);
    }
    return statusOf(report);
}

void PathsCommand::printJson(std::ostream& out, nlohmann::ordered_json json, board::LoadedBoard const* loaded,
                             board::Cables const& cables) const {
    if (_live.isLive()) {
        return printWithTime(out, json);
    }
    if (loaded != nullptr) {
        LiveBoard::addUnread(json, *loaded, cables);
    }
    print(out, json);
}

ExitStatus PathsCommand::perform(std::ostream& out, std::ostream& errors) const {
    if (_whileStarting) {
        return watch(out, errors);
    }
    OutputDiversion const diversion(errors);
    std::optional<Progress> progress(std::in_place, errors, "asking the models of " + _path);
    auto const document = reference_host::XmlDocument::fromFile(_path);
    std::unique_ptr<board::LoadedBoard> const live =
        _live.isChosen() ? _live.load(*document, _path) : nullptr;
    std::optional<board::ModelBringUp> bringUp;
    if (!live) {
        bringUp.emplace(*document, _path);
    }
    board::IntendedBoard const board(*document);
    board::Intent const intent(board);
    if (live) {
        LiveBoard::requireRead(*live, _between, _cables);
    }
    board::Cables const cables(_cables, board, _path, LiveBoard::getUnread(live.get()));
    RegisterPaths const registers(live ? live->getChips() : RegisterPaths::chipsOf(bringUp->getBoard()));
    board::AskedFrames const frames(board, board::BoardReading(*document),
                                    live ? live->getVids() : std::set<unsigned>());
    PathComparison::Selection const selection = selectionOf(registers, _between);
    PathComparison const comparison(intent, registers, frames, selection);
    StationsReport const stations(cables, board.getLabels(), frames,
                                  stationsOf(intent, registers, frames, cables, selection));
    PathsReport const report(_path, intent, comparison, stations);
    progress.reset();
    if (isJson()) {
        printJson(out, report.toJson(), live.get(), cables);
    } else {
        if (live) {
            LiveBoard::printUnread(out, *live, cables);
        }
        report.print(out);
    }
    return statusOf(report);
}

} // namespace switchctl::paths
