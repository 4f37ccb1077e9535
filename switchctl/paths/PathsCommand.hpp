#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "switchctl/Command.hpp"
#include "switchctl/LiveBoard.hpp"

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
    ExitStatus watch(std::ostream& out, std::ostream& errors) const;

    /// \param loaded null after a bring-up.
    void printJson(std::ostream& out, nlohmann::ordered_json json, board::LoadedBoard const* loaded,
                   board::Cables const& cables) const;

    LiveBoard _live;
    std::string _path;
    std::vector<std::string> _between;
    std::vector<std::string> _cables;
    bool _whileStarting = false;
    std::string _oldPath;
};

} // namespace switchctl::paths
