#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "board/paths/LoadedBoard.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl::paths {

/// `switchctl paths`: who reaches whom after a bring-up, and where that is not what the document asks for.
class PathsCommand : public Command {
public:
    /// \param memoryDevice what leads to the registers of a board.
    explicit PathsCommand(std::string memoryDevice);

protected:
    void declare(Arguments& arguments) override;
    std::string getHelp() const override;
    std::vector<StatusLine> getStatuses() const override;
    ExitStatus perform(std::ostream& out, std::ostream& errors) const override;

private:
    std::unique_ptr<board::LoadedBoard> load(Xml& document) const;

    std::string const _memoryDevice;
    bool _isLive = false;
    Simulation _simulation;
    std::string _path;
    std::vector<std::string> _between;
    std::vector<std::string> _cables;
};

} // namespace switchctl::paths
