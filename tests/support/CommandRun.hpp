#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"

namespace test_support {

/// What a command of switchctl did that was run in this process.
struct CommandRun {
    chips::ExitStatus status;
    std::string out;
    std::string errors;

    /// \param arguments as on a command line, from the command's name on.
    /// \param options for the command's constructor.
    template <typename Command, typename... Options>
    static CommandRun of(std::vector<std::string> const& arguments, Options const&... options) {
        std::ostringstream out;
        std::ostringstream errors;
        switchctl::Arguments program("switchctl", "", "");
        Command command(options...);
        command.addTo(program);
        auto const refused = program.parse(arguments, out, errors);
        chips::ExitStatus const status = refused ? *refused : command.run(out, errors);
        return {status, out.str(), errors.str()};
    }
};

} // namespace test_support
