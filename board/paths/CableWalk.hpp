#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "board/intent/FrameKind.hpp"
#include "board/paths/Cables.hpp"

namespace board {

/// Where a frame gets over the cables of a board, by whatever says what one switch does with it.
class CableWalk {
public:
    /// A switch and a port; the order is theirs.
    using Place = std::pair<unsigned, unsigned>;

    /// What leaves a switch.
    struct Copies {
        FrameKind::Tags tags;
        PortSet ports = 0;
        /// It must; else it may.
        bool isCertain = true;
    };

    /// What a switch does with a frame that a port gets.
    using Step = std::function<std::vector<Copies>(Place const& at, FrameKind::Tags const& tags)>;

    /// The tags with which a frame gets to stations, and whether it must.
    using Arrivals = std::map<Place, std::map<FrameKind::Tags, bool>>;

    struct Result {
        /// At ports without a cable, of frames that have crossed one.
        Arrivals arrivals;
        /// Ports that the frame enters over and over again; none when it does not.
        std::vector<Place> loop;
    };

    /// Both must outlive the object.
    CableWalk(Cables const& cables, Step step) : _cables(cables), _step(std::move(step)) {}

    Result run(Place const& from, FrameKind::Tags const& tags) const;

private:
    using Stage = std::pair<Place, FrameKind::Tags>;

    struct Progress {
        Result result;
        // Where it has been, and whether it must have.
        std::map<Stage, bool> seen;
        std::vector<Stage> way;
    };

    void enter(Stage const& stage, bool isCertain, Progress& progress) const;
    void leave(Stage const& stage, bool isCertain, Progress& progress) const;
    static bool isLoop(Stage const& stage, Progress& progress);

    Cables const& _cables;
    Step _step;
};

} // namespace board
