#pragma once

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "chips/ExitStatus.hpp"
#include "switchctl/replay/Replay.hpp"

namespace switchctl::replay {

/// `switchctl replay`: whether chip models do what a trace says.
class ReplayCommand {
public:
    /// Adds the command to the program's.
    explicit ReplayCommand(CLI::App& program);

    /// Whether the command line asks for it.
    bool isChosen() const;

    /// \param out gets the first divergence, or how much was replayed.
    /// \param errors gets why the trace cannot be read, and what the library prints.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    void print(std::ostream& out, board::TraceReader const& trace,
               Replay::Divergence const& divergence) const;

    CLI::App* _command;
    std::string _path;
};

} // namespace switchctl::replay
