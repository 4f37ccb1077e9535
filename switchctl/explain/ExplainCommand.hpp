#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"

namespace switchctl::explain {

/// `switchctl explain`: why a frame gets from one port to another, or does not.
class ExplainCommand : public Command {
public:
    ExplainCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::string _path;
    std::string _from;
    std::vector<std::string> _words;
    std::vector<std::string> _cables;
};

} // namespace switchctl::explain
