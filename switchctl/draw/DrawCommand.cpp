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

DrawCommand::DrawCommand(CLI::App& program)
    : _command(program.add_subcommand("draw", "Draw a board: switches, ports, trunks, VLANs")) {
    _command->add_option("BOARD.xml", _documentPath, "Configuration document of the board")->required();
    _command->add_option("-o,--output", _outputPath, "File to write; may be left out for --format dot");
    _command->add_option("--format", _format, "svg, or dot for Graphviz's own language")
        ->check(CLI::IsMember({"svg", "dot"}))
        ->capture_default_str();
    _command->add_option("--graphviz", _graphviz, "Graphviz's program, which draws svg")
        ->capture_default_str();
    _command->footer("Examples:\n"
                     "  switchctl draw board.xml -o board.svg\n"
                     "  switchctl draw board.xml --format dot | dot -Tpng > board.png\n"
                     "\n" +
                     chips::drawExitStatusHelp());
    _command->final_callback([this] {
        if (_outputPath.empty() && _format != "dot") {
            throw CLI::RequiredError("--output");
        }
    });
}

bool DrawCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus DrawCommand::run(std::ostream& out, std::ostream& errors) const {
    std::unique_ptr<XmlDocument> document;
    try {
        document = XmlDocument::fromFile(_documentPath);
    } catch (reference_host::XmlError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return chips::ExitStatus::badDocument;
    }
    board::BoardReading const board(*document);
    if (board.getSwitches().empty()) {
        errors << "switchctl: " << _documentPath << ": the document has no switch to draw\n";
        return chips::ExitStatus::badDocument;
    }
    return write(BoardDrawing(board, _documentPath.substr(_documentPath.rfind('/') + 1)).getDot(), out,
                 errors);
}

chips::ExitStatus DrawCommand::write(std::string const& graph, std::ostream& out,
                                     std::ostream& errors) const {
    if (_format == "dot" && _outputPath.empty()) {
        out << graph;
        return chips::ExitStatus::success;
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
        errors << "switchctl: " << error.what() << '\n';
        return chips::ExitStatus::noPicture;
    }
    return chips::ExitStatus::success;
}

} // namespace switchctl::draw
