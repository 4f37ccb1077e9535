#include "switchctl/draw/DrawCommand.hpp"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>
#include <ostream>

#include "board/BoardReading.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/draw/BoardDrawing.hpp"
#include "switchctl/draw/Graphviz.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::draw {

using reference_host::XmlDocument;

DrawCommand::DrawCommand() : Command("draw", "Draw a board: switches, ports, trunks, VLANs") {}

void DrawCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _documentPath, "Configuration document of the board").required();
    arguments.option("-o,--output", _outputPath, "File to write; may be left out for --format dot");
    arguments.option("--format", _format, "svg, or dot for Graphviz's own language")
        .oneOf({"svg", "dot"})
        .showDefault();
    arguments.option("--graphviz", _graphviz, "Graphviz's program, which draws svg").showDefault();
    arguments.finally([this] {
        if (_outputPath.empty() && _format != "dot") {
            throw Arguments::Wrong("--output is required");
        }
    });
}

std::string DrawCommand::getHelp() const {
    return "Examples:\n"
           "  switchctl draw board.xml -o board.svg\n"
           "  switchctl draw board.xml --format dot | dot -Tpng > board.png\n"
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
    return write(BoardDrawing(board, _documentPath.substr(_documentPath.rfind('/') + 1)).getDot(), out,
                 errors);
}

ExitStatus DrawCommand::write(std::string const& graph, std::ostream& out, std::ostream& errors) const {
    if (_format == "dot" && _outputPath.empty()) {
        out << graph;
        return ExitStatus::success;
    }
    try {
        Progress const progress(errors, "drawing " + _outputPath);
        if (_format == "dot") {
            std::ofstream file(_outputPath);
            if (!(file << graph << std::flush)) {
                throw Graphviz::Error(_outputPath + ": " + std::strerror(errno));
            }
        } else {
            Graphviz(_graphviz).render(graph, _format, _outputPath);
        }
    } catch (Graphviz::Error const& error) {
        throw ToolError(ExitStatus::noPicture, error.what());
    }
    return ExitStatus::success;
}

} // namespace switchctl::draw
