#pragma once

#include <ostream>
#include <string>

#include "switchctl/Command.hpp"

namespace switchctl::check {

/// `switchctl check`: what is odd about a configuration document, without a board.
class CheckCommand : public Command {
public:
    CheckCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    ExitStatus list(std::ostream& out) const;
    ExitStatus refuse(std::string const& reason, std::ostream& out, std::ostream& errors) const;

    std::string _documentPath;
    bool _list = false;
    bool _schema = false;
};

} // namespace switchctl::check
