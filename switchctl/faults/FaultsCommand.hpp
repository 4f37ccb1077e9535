#pragma once

#include "switchctl/Command.hpp"

namespace switchctl::faults {

/// `switchctl faults`: what --fault takes.
class FaultsCommand : public Command {
public:
    FaultsCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;
};

} // namespace switchctl::faults
