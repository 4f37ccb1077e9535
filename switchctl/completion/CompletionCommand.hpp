#pragma once

#include <string>
#include <vector>

#include "switchctl/Command.hpp"

namespace switchctl::completion {

/// `switchctl completion`: what shells load to complete command lines, and what they then ask for.
class CompletionCommand : public Command {
public:
    /// \param program whose arguments are completed; has to outlive the command.
    explicit CompletionCommand(Arguments const& program);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    void printCandidates(std::ostream& out) const;

    Arguments const& _program;
    std::string _shell;
    std::vector<std::string> _line;
};

} // namespace switchctl::completion
