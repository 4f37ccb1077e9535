#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "reference_host/DeviceMemory.hpp"
#include "switchctl/Command.hpp"

namespace switchctl {

/// `switchctl`: its commands, and the choice of one by the command line.
class Program {
public:
    /// \param memoryDevice where hardware is reached.
    explicit Program(std::string const& memoryDevice = reference_host::DeviceMemory::defaultDevicePath);

    /// Runs the command that the words, without the program's name, ask for. Call it once.
    /// \return how it ended; outputLost, whatever else happened, when `out` has not taken all of its results.
    ExitStatus run(std::vector<std::string> const& words, std::ostream& out, std::ostream& errors);

private:
    ExitStatus choose(std::vector<std::string> const& words, std::ostream& out, std::ostream& errors);

    std::vector<std::unique_ptr<Command>> _commands;
};

} // namespace switchctl
