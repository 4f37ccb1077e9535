#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"

namespace switchctl::registers {

/// `switchctl register`: single registers of a chip, by hand.
class RegisterCommand : public Command {
public:
    /// \param memoryDevice where hardware is reached.
    explicit RegisterCommand(std::string const& memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::vector<std::unique_ptr<Command>> _actions;
};

} // namespace switchctl::registers
