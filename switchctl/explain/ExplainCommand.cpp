#include "switchctl/explain/ExplainCommand.hpp"

#include <nlohmann/json.hpp>
#include <optional>

#include "board/ModelBringUp.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/Cables.hpp"
#include "chips/PortAddress.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/explain/ExplainReport.hpp"
#include "switchctl/explain/FrameQuestion.hpp"
#include "switchctl/explain/FrameWay.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::explain {

ExplainCommand::ExplainCommand(std::string memoryDevice)
    : Command("explain", "Say why a frame gets to a port, or why not"), _live(std::move(memoryDevice)) {}

void ExplainCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("SWITCH.PORT", _from, "The port that gets the frame").required();
    arguments.option("FRAME", _words, "[untagged|tagged VID] to SWITCH.PORT|MAC|GROUP|all").required();
    arguments
        .option("--cable", _cables,
                "A cable between two ports, beside those of the document. May be repeated")
        .type("SWITCH.PORT=SWITCH.PORT")
        .oneEach();
    _live.addTo(arguments);
    addJson(arguments);
    arguments.finally([this] {
        FrameQuestion const question(_words);
        if (!chips::PortAddress::fromText(_from)) {
            throw Arguments::Wrong("\"" + _from + "\" is not of the form SWITCH.PORT");
        }
    });
}

std::string ExplainCommand::getHelp() const {
    return "The frame is followed rule by rule, with the registers that each rule looks at, as a bring-up "
           "on\n"
           "chip models leaves them with all links plugged in, and the line of the document behind it. "
           "Where\n"
           "it stops, changes of registers that would let it pass are tried: all single ones, else all "
           "pairs,\n"
           "else all threes. A frame to a port is for a station that no chip knows. Where no way over the\n"
           "cables leads there, that of the fewest cables is shown. --live reads the chips as an audit "
           "does,\n"
           "--from takes dumps of them, one a switch; of a switch without one, nothing is said.\n"
           "\n"
           "Examples:\n"
           "  switchctl explain board.xml 0.1 to 0.10\n"
           "  switchctl explain board.xml 0.1 tagged 5 to 239.1.2.3\n"
           "  switchctl explain board.xml 0.1 to 3.0 --cable 0.10=3.20\n"
           "  switchctl explain board.xml 0.1 to 0.10 --live\n"
           "  switchctl explain board.xml 0.1 to 0.10 --from switch0.txt\n"
           "\n";
}

std::vector<Command::StatusLine> ExplainCommand::getStatuses() const {
    return {{ExitStatus::success, "the frame is delivered"},
            {ExitStatus::notDelivered, "it is not"},
            {ExitStatus::usage, "the command line is wrong, or the board has no such port"},
            {ExitStatus::badDocument, "the document or a dump cannot be read, is not well-formed or lacks "
                                      "something"},
            ExitStatus::noHardware,
            ExitStatus::startUpFailed,
            {ExitStatus::registerFailed, "a chip could not be read completely"}};
}

ExitStatus ExplainCommand::perform(std::ostream& out, std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    std::optional<Progress> progress(std::in_place, errors, "asking the models of " + _path);
    auto const document = reference_host::XmlDocument::fromFile(_path);
    auto const live = _live.isChosen() ? _live.load(*document, _path) : nullptr;
    std::optional<board::ModelBringUp> bringUp;
    if (!live) {
        bringUp.emplace(*document, _path);
    }
    board::IntendedBoard const board(*document);
    board::Intent const intent(board);
    if (live) {
        LiveBoard::requireRead(*live, {_from, _words.back()}, _cables);
    }
    board::Cables const cables(_cables, board, _path, LiveBoard::getUnread(live.get()));
    FrameWay way(live ? live->getBoard() : bringUp->getBoard(), intent, cables);
    way.follow(*chips::PortAddress::fromText(_from), FrameQuestion(_words));
    board::BoardReading const reading(*document);
    ExplainReport const report(_path, reading, intent, way, FrameQuestion(_words));
    progress.reset();
    auto json = isJson() ? report.toJson() : nlohmann::ordered_json();
    if (live && !_live.isLive() && isJson()) {
        LiveBoard::addUnread(json, *live, cables);
    } else if (live && !isJson()) {
        LiveBoard::printUnread(out, *live, cables);
    }
    if (isJson() && _live.isLive()) {
        printWithTime(out, json);
    } else if (isJson()) {
        Command::print(out, json);
    } else {
        report.print(out);
    }
    return !way.getDeliveries().empty() ? ExitStatus::success : ExitStatus::notDelivered;
}

} // namespace switchctl::explain
