#pragma once

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>

#include "chips/ExitStatus.hpp"

namespace switchctl::draw {

/// `switchctl draw`: a board as a picture.
class DrawCommand {
public:
    /// Adds the command to the program's.
    explicit DrawCommand(CLI::App& program);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the graph when no file is to; `errors` why there is no picture.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    chips::ExitStatus write(std::string const& graph, std::ostream& out, std::ostream& errors) const;

    CLI::App* _command;
    std::string _documentPath;
    std::string _outputPath;
    std::string _format = "svg";
    std::string _graphviz = "dot";
};

} // namespace switchctl::draw
