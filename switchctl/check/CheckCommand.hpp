#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "chips/ExitStatus.hpp"

namespace switchctl::check {

/// `switchctl check`: what is odd about a configuration document, without a board.
class CheckCommand {
public:
    /// Adds the command to the program's.
    explicit CheckCommand(CLI::App& program);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the findings, `errors` why the document cannot be read.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    chips::ExitStatus list(std::ostream& out) const;
    chips::ExitStatus refuse(std::string const& reason, std::ostream& out, std::ostream& errors) const;

    CLI::App* _command;
    std::string _documentPath;
    bool _json = false;
    bool _list = false;
    bool _schema = false;
};

} // namespace switchctl::check
