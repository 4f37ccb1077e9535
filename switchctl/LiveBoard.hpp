#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "board/paths/Cables.hpp"
#include "board/paths/LoadedBoard.hpp"
#include "switchctl/Arguments.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl {

/// `--live [--simulate[=DOCUMENT]]` and `--from DUMP`: models that hold what the chips of the board do, or
/// did when they were dumped, in place of those of a bring-up.
class LiveBoard {
public:
    /// \param memoryDevice what leads to the registers of a board.
    explicit LiveBoard(std::string memoryDevice) : _memoryDevice(std::move(memoryDevice)) {}

    void addTo(Arguments& arguments);

    /// Whether chips are read, so that the answer may be another one each time.
    bool isLive() const { return _isLive; }
    /// Whether load() is to be called.
    bool isChosen() const { return _isLive || !_dumps.empty(); }

    /// Reads the chips, or the dumps. Throws as board::LoadedBoard and board::BoardAccess.
    /// \param path of the document.
    std::unique_ptr<board::LoadedBoard> load(Xml& document, std::string const& path) const;

    /// Throws ToolError (badDocument) when one of the ports, or the end of a cable, is of an unread switch.
    /// \param ports texts; those that are no ports do not count.
    /// \param cables as they were typed.
    static void requireRead(board::LoadedBoard const& loaded, std::vector<std::string> const& ports,
                            std::vector<std::string> const& cables);

    /// What is unread, a line each; nothing when all was read.
    static void printUnread(std::ostream& out, board::LoadedBoard const& loaded, board::Cables const& cables);
    /// The same in members of the object.
    static void addUnread(nlohmann::ordered_json& json, board::LoadedBoard const& loaded,
                          board::Cables const& cables);

    /// Switches that no dump is of.
    /// \param loaded may be null.
    static std::set<unsigned> getUnread(board::LoadedBoard const* loaded);

private:
    std::string const _memoryDevice;
    bool _isLive = false;
    Simulation _simulation;
    std::vector<std::string> _dumps;
};

} // namespace switchctl
