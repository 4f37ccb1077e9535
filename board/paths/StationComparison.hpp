#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "board/intent/Intent.hpp"
#include "board/paths/AskedFrames.hpp"
#include "board/paths/CableWalk.hpp"
#include "board/paths/Cables.hpp"
#include "board/paths/PathLine.hpp"
#include "board/paths/RegisterPaths.hpp"

namespace board {

/// Who reaches whom over cables, and where that is not what the document asks for.
class StationComparison {
public:
    using Place = CableWalk::Place;

    /// One of path, leak, missing, form and loop.
    using Kind = PathLine::Kind;

    /// Ports at which frames arrive with the same tags; of what is missing, at which they should; of a loop,
    /// the ports that they enter.
    using Reach = std::map<PathLine::Form, std::vector<Place>>;

    struct Line {
        Kind kind;
        std::vector<Place> from;
        std::vector<FrameKind::Tags> frames;
        /// Indices of AskedFrames.
        std::vector<std::size_t> destinations;
        Reach reach;
    };

    /// What counts of each switch, as PathComparison has it.
    using Selection = std::map<unsigned, PortSet>;

    /// All of them must outlive the object.
    StationComparison(Intent const& intent, RegisterPaths const& registers, AskedFrames const& frames,
                      Cables const& cables, Selection const& selection);

    /// By kind; the paths first.
    std::vector<Line> getLines() const;

private:
    struct Case {
        std::size_t tags;
        std::size_t destination;
        Place from;
        CableWalk::Result wanted;
        CableWalk::Result found;
    };

    using Frames = std::map<std::size_t, std::vector<std::size_t>>; // tags by destination
    using Fact = std::pair<Kind, std::pair<Place, Reach>>;

    void ask(std::size_t tags, std::size_t destination);
    std::vector<CableWalk::Copies> stepOfIntent(Place const& at, FrameKind const& kind) const;
    std::vector<CableWalk::Copies> stepOfRegisters(Place const& at,
                                                   simulation::EthernetFrame const& frame) const;
    void compare(Case const& asked);
    void add(Case const& asked, Kind kind, Reach reach);
    bool isSelected(Place const& port) const;

    Intent const& _intent;
    RegisterPaths const& _registers;
    AskedFrames const& _frames;
    Cables const& _cables;
    Selection const _selection;
    std::map<Fact, Frames> _facts;
};

} // namespace board
