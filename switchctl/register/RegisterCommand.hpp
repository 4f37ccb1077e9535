#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

/// `switchctl register`: single registers of a chip, by hand.
class RegisterCommand {
public:
    /// Adds the command to the program's command line.
    /// \param memoryDevice where hardware is reached.
    explicit RegisterCommand(
        CLI::App& program, std::string const& memoryDevice = reference_host::DeviceMemory::defaultDevicePath);
    RegisterCommand(RegisterCommand const&) = delete;
    RegisterCommand& operator=(RegisterCommand const&) = delete;

    /// Whether the parsed command line asks for it.
    bool isChosen() const;

    /// \param out gets the results.
    /// \param errors gets the reason of a refusal, and what the library prints.
    chips::ExitStatus run(std::ostream& out, std::ostream& errors) const;

private:
    CLI::App* _command;
    std::vector<std::unique_ptr<RegisterAction>> _actions;
};

} // namespace switchctl::registers
