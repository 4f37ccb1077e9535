#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "board/paths/OpenPaths.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/AccessLog.hpp"

namespace board {

/// A bring-up on models, write by write, with a look at who reaches whom after each: on chips after a reset,
/// or on what a bring-up of another document has left in them.
///
/// What a chip does with a write does not depend on who looks, so the library brings the board up first, and
/// its accesses then come once more to a second board, of which all links are plugged in.
class WatchedStartUp {
public:
    /// Throws as ModelBringUp.
    /// \param path of the document.
    /// \param oldPath of the one that the chips were brought up by before; empty when they come from a reset.
    ///        A switch that it does not have, or as another chip, comes from a reset.
    WatchedStartUp(std::string const& path, std::string const& oldPath);
    WatchedStartUp(WatchedStartUp const&) = delete;
    WatchedStartUp& operator=(WatchedStartUp const&) = delete;

    OpenPaths const& getPaths() const { return *_paths; }
    AskedFrames const& getFrames() const { return *_frames; }
    Labels const& getLabels() const { return _known.board.getLabels(); }

    /// In their order; what OpenPaths calls write 1 is the first. Times are since the bring-up began.
    std::vector<simulation::AccessLog::Entry> const& getWrites() const { return _writes; }

private:
    using Entries = std::vector<simulation::AccessLog::Entry>;

    /// A document that the chips know.
    struct Known {
        explicit Known(std::string const& path);

        std::unique_ptr<reference_host::XmlDocument> document;
        IntendedBoard board;
        Intent intent{board};
        BoardReading reading;
    };

    static Entries accessesOf(ModelBringUp& bringUp);
    Entries getPast(std::string const& oldPath) const;
    void watch(Entries const& past, Entries const& accesses);

    Known _known;
    std::optional<Known> _old;
    std::optional<AskedFrames> _frames;
    std::optional<simulation::SimulatedBoard> _board;
    std::optional<RegisterPaths> _registers;
    std::optional<OpenPaths> _paths;
    Entries _writes;
};

} // namespace board
