#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"

namespace test_support {

/// What a command of switchctl did that was run in this process.
struct CommandRun {
    chips::ExitStatus status;
    std::string out;
    std::string errors;

    /// \param arguments as on a command line, from the command's name on; parse errors are thrown on.
    /// \param options for the command's constructor, after the program.
    template <typename Command, typename... Options>
    static CommandRun of(std::vector<std::string> arguments, Options const&... options) {
        CLI::App program;
        Command const command(program, options...);
        std::reverse(arguments.begin(), arguments.end());
        program.parse(arguments);
        std::ostringstream out;
        std::ostringstream errors;
        chips::ExitStatus const status = command.run(out, errors);
        return {status, out.str(), errors.str()};
    }
};

} // namespace test_support
