#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "chips/ExitStatus.hpp"

namespace switchctl::plan {

/// `switchctl plan`: what a bring-up of a document would write to the chips, without a board.
class PlanCommand {
public:
    /// Adds the command to the program's.
    explicit PlanCommand(CLI::App& program);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the plan or the difference.
    /// \param errors gets why there is none, and what the library prints.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    chips::ExitStatus show(std::ostream& out, std::ostream& errors) const;
    chips::ExitStatus compare(std::ostream& out, std::ostream& errors) const;

    CLI::App* _command;
    std::string _path;
    std::string _otherPath;
    bool _json = false;
};

} // namespace switchctl::plan
