#include "switchctl/draw/DrawCommand.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <string>

#include "board/BoardReading.hpp"
#include "board/ModelBringUp.hpp"
#include "board/OutputFile.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/PathComparison.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/draw/BoardDrawing.hpp"
#include "switchctl/draw/BoardJson.hpp"
#include "switchctl/draw/Graphviz.hpp"
#include "switchctl/draw/MatrixDrawing.hpp"
#include "switchctl/draw/PathMatrix.hpp"
#include "switchctl/draw/VlanColours.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::draw {

using reference_host::XmlDocument;

namespace {

constexpr std::array<char const*, 4> formats = {"svg", "png", "dot", "json"};

} // namespace

DrawCommand::DrawCommand() : Command("draw", "Draw a board: switches, ports, trunks, VLANs") {}

void DrawCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _documentPath, "Configuration document of the board").required();
    arguments
        .option("-o,--output", _outputPath,
                "File to write; .svg, .png, .dot (Graphviz's own language) or .json decides the format, and "
                "\"-\" "
                "is the standard output. May be left out for --format dot and json")
        .type("FILE");
    addJson(arguments, {formats.begin(), formats.end()}, "");
    auto const cable = arguments
                           .option("--cable", _cables,
                                   "A cable between two ports, beside those of the document. May be repeated")
                           .type("SWITCH.PORT=SWITCH.PORT")
                           .oneEach();
    arguments.option("--graphviz", _graphviz, "Graphviz's program, which draws svg and png").showDefault();
    arguments
        .flag("--paths", _paths,
              "Draw who reaches whom after a bring-up on chip models, as a matrix in svg, and what of it is "
              "not as the document wants it")
        .excludes(cable);
    arguments.finally([this] {
        if (chooseFormat() != "svg" && _paths) {
            throw Arguments::Wrong(
                "--paths: can only be drawn as svg; \"switchctl paths --json\" is for programs");
        }
    });
}

/// A picture is what its name says.
std::string DrawCommand::chooseFormat() const {
    std::string const asked = getFormat();
    std::string const suffix = std::filesystem::path(_outputPath).extension();
    std::string const named = suffix.empty() ? asked : suffix.substr(1);
    if (!suffix.empty() && std::find(formats.begin(), formats.end(), named) == formats.end()) {
        throw Arguments::Wrong("--output: " + _outputPath + ": not a name of a .svg, .png, .dot or .json");
    }
    if (!asked.empty() && named != asked) {
        throw Arguments::Wrong("--output: " + _outputPath + ": not a name of a ." + asked);
    }
    if (_outputPath.empty() && (named.empty() || named == "svg" || named == "png")) {
        throw Arguments::Wrong("--output is required");
    }
    return named.empty() ? "svg" : named;
}

std::string DrawCommand::getHelp() const {
    return "Examples:\n"
           "  switchctl draw board.xml -o board.svg\n"
           "  switchctl draw board.xml -o board.png\n"
           "  switchctl draw board.xml --cable 0.10=3.20 -o board.svg\n"
           "  switchctl draw board.xml --paths -o matrix.svg\n"
           "  switchctl draw board.xml --format dot | dot -Tpdf > board.pdf\n"
           "\n";
}

std::vector<Command::StatusLine> DrawCommand::getStatuses() const {
    return {{ExitStatus::success, "the picture was written"},
            ExitStatus::usage,
            {ExitStatus::badDocument, "the document cannot be read, is not well-formed or has no switch"},
            {ExitStatus::startUpFailed,
             "with --paths, a bring-up on models fails, or not every switch would come up"},
            {ExitStatus::noPicture, "the picture could not be drawn or written"}};
}

ExitStatus DrawCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    board::BoardReading const board(*document);
    if (board.getSwitches().empty()) {
        throw ToolError(ExitStatus::badDocument, _documentPath + ": the document has no switch to draw");
    }
    std::string const picture = _paths ? drawPaths(*document, board, errors) : draw(*document, board, errors);
    board::OutputFile file(_outputPath.empty() ? "-" : _outputPath, out, ExitStatus::noPicture);
    file.getStream() << picture;
    file.finish();
    return ExitStatus::success;
}

std::string DrawCommand::getTitle() const {
    return _documentPath.substr(_documentPath.rfind('/') + 1);
}

std::string DrawCommand::drawPaths(Xml& document, board::BoardReading const& reading,
                                   std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    Progress const progress(errors, "asking the models of " + _documentPath);
    board::ModelBringUp bringUp(document, _documentPath);
    board::IntendedBoard const intended(document);
    board::Intent const intent(intended);
    board::RegisterPaths const registers(board::RegisterPaths::chipsOf(bringUp.getBoard()));
    board::AskedFrames const frames(intended, reading);
    PathMatrix const matrix(board::PathComparison(intent, registers, frames));
    MatrixDrawing::Sizes sizes;
    for (auto const& [id, chip] : registers.getChips()) {
        if (intended.getSwitches().count(id) != 0) {
            sizes.emplace(id, chip->getNumberOfPorts());
        }
    }
    std::map<unsigned, std::string> colours;
    for (auto const& [id, vlan] : reading.getVlans()) {
        colours.emplace(id, vlanColour(colours.size()));
    }
    return MatrixDrawing(matrix, sizes, intended, colours).getSvg(getTitle());
}

std::string DrawCommand::draw(Xml& document, board::BoardReading const& board, std::ostream& errors) const {
    board::Cables const cables(_cables, board::IntendedBoard(document), _documentPath);
    std::string const format = chooseFormat();
    if (format == "json") {
        std::ostringstream text;
        print(text, BoardJson::of(board, cables, _documentPath));
        return text.str();
    }
    std::string graph = BoardDrawing(board, cables, getTitle()).getDot();
    if (format == "dot") {
        return graph;
    }
    Progress const progress(errors, "drawing " + _outputPath);
    try {
        return Graphviz(_graphviz).render(graph, format);
    } catch (Graphviz::Error const& error) {
        throw ToolError(ExitStatus::noPicture, error.what());
    }
}

} // namespace switchctl::draw
