#include "switchctl/draw/DrawCommand.hpp"

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "board/BoardReading.hpp"
#include "board/OutputFile.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/draw/BoardDrawing.hpp"
#include "switchctl/draw/Graphviz.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::draw {

using reference_host::XmlDocument;

DrawCommand::DrawCommand() : Command("draw", "Draw a board: switches, ports, trunks, VLANs") {}

void DrawCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _documentPath, "Configuration document of the board").required();
    arguments
        .option("-o,--output", _outputPath,
                "File to write, FILE.svg, FILE.png or FILE.dot; \"-\" is the standard output. May be left "
                "out for --format dot")
        .type("FILE");
    arguments
        .option("--format", _format,
                "svg, png, or dot for Graphviz's own language; without it, what FILE ends with, or svg")
        .oneOf({"svg", "png", "dot"});
    arguments.option("--graphviz", _graphviz, "Graphviz's program, which draws svg and png").showDefault();
    arguments.finally([this] { chooseFormat(); });
}

/// A picture is what its name says.
void DrawCommand::chooseFormat() {
    std::string const suffix = std::filesystem::path(_outputPath).extension();
    auto const named = suffix.empty() ? _format : suffix.substr(1);
    if (!suffix.empty() && named != "svg" && named != "png" && named != "dot") {
        throw Arguments::Wrong("--output: " + _outputPath + ": not a name of a .svg, .png or .dot");
    }
    if (!_format.empty() && named != _format) {
        throw Arguments::Wrong("--output: " + _outputPath + ": not a name of a ." + _format);
    }
    _format = named.empty() ? "svg" : named;
    if (_outputPath.empty() && _format != "dot") {
        throw Arguments::Wrong("--output is required");
    }
    _outputPath = _outputPath.empty() ? "-" : _outputPath;
}

std::string DrawCommand::getHelp() const {
    return "Examples:\n"
           "  switchctl draw board.xml -o board.svg\n"
           "  switchctl draw board.xml -o board.png\n"
           "  switchctl draw board.xml --format dot | dot -Tpdf > board.pdf\n"
           "\n";
}

std::vector<Command::StatusLine> DrawCommand::getStatuses() const {
    return {{ExitStatus::success, "the picture was written"},
            ExitStatus::usage,
            {ExitStatus::badDocument, "the document cannot be read, is not well-formed or has no switch"},
            {ExitStatus::noPicture, "the picture could not be drawn or written"}};
}

ExitStatus DrawCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    board::BoardReading const board(*document);
    if (board.getSwitches().empty()) {
        throw ToolError(ExitStatus::badDocument, _documentPath + ": the document has no switch to draw");
    }
    std::string const title = _documentPath.substr(_documentPath.rfind('/') + 1);
    std::string const picture = draw(BoardDrawing(board, title).getDot(), errors);
    board::OutputFile file(_outputPath, out, ExitStatus::noPicture);
    file.getStream() << picture;
    file.finish();
    return ExitStatus::success;
}

std::string DrawCommand::draw(std::string const& graph, std::ostream& errors) const {
    if (_format == "dot") {
        return graph;
    }
    Progress const progress(errors, "drawing " + _outputPath);
    try {
        return Graphviz(_graphviz).render(graph, _format);
    } catch (Graphviz::Error const& error) {
        throw ToolError(ExitStatus::noPicture, error.what());
    }
}

} // namespace switchctl::draw
