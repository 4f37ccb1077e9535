#pragma once

#include <iosfwd>
#include <string>

#include "switchctl/Command.hpp"

namespace switchctl::draw {

/// `switchctl draw`: a board as a picture.
class DrawCommand : public Command {
public:
    DrawCommand();

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    void chooseFormat();
    std::string draw(std::string const& graph, std::ostream& errors) const;

    std::string _documentPath;
    std::string _outputPath;
    std::string _format;
    std::string _graphviz = "dot";
};

} // namespace switchctl::draw
