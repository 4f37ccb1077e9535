#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
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
    std::string chooseFormat() const;
    std::string draw(Xml& document, board::BoardReading const& board, std::ostream& errors) const;
    std::string drawPaths(Xml& document, board::BoardReading const& reading, std::ostream& errors) const;
    std::string getTitle() const;

    std::string _documentPath;
    std::string _outputPath;
    std::vector<std::string> _cables;
    std::string _graphviz = "dot";
    bool _paths = false;
};

} // namespace switchctl::draw
