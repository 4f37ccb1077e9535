#pragma once

#include <ostream>
#include <string>

#include "switchctl/Command.hpp"

namespace switchctl::plan {

/// `switchctl plan`: what a bring-up of a document would write to the chips, without a board.
class PlanCommand : public Command {
public:
    PlanCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    ExitStatus show(std::ostream& out, std::ostream& errors) const;
    ExitStatus compare(std::ostream& out, std::ostream& errors) const;

    std::string _path;
    std::string _otherPath;
};

} // namespace switchctl::plan
