#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"
#include "switchctl/LiveBoard.hpp"

namespace switchctl::explain {

/// `switchctl explain`: why a frame gets from one port to another, or does not.
class ExplainCommand : public Command {
public:
    /// \param memoryDevice what leads to the registers of a board.
    explicit ExplainCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    LiveBoard _live;
    std::string _path;
    std::string _from;
    std::vector<std::string> _words;
    std::vector<std::string> _cables;
};

} // namespace switchctl::explain
