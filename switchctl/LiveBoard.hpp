#pragma once

#include <memory>
#include <string>

#include "board/paths/LoadedBoard.hpp"
#include "switchctl/Arguments.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl {

/// `--live [--simulate[=DOCUMENT]]`: models that hold what the chips of the board do, in place of those of a
/// bring-up.
class LiveBoard {
public:
    /// \param memoryDevice what leads to the registers of a board.
    explicit LiveBoard(std::string memoryDevice) : _memoryDevice(std::move(memoryDevice)) {}

    void addTo(Arguments& arguments);

    bool isChosen() const { return _isChosen; }

    /// Reads the chips. Throws as board::LoadedBoard and board::BoardAccess.
    /// \param path of the document.
    std::unique_ptr<board::LoadedBoard> load(Xml& document, std::string const& path) const;

private:
    std::string const _memoryDevice;
    bool _isChosen = false;
    Simulation _simulation;
};

} // namespace switchctl
