#pragma once

#include <optional>
#include <set>
#include <vector>

#include "board/intent/Intent.hpp"
#include "board/paths/Cables.hpp"
#include "board/paths/PathExplanation.hpp"
#include "board/paths/RegisterPaths.hpp"
#include "chips/PortAddress.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/explain/FrameQuestion.hpp"

namespace switchctl::explain {

/// The way of a frame through one switch after the other, until it is where it should be or stops.
class FrameWay {
public:
    /// One switch of it.
    struct Hop {
        chips::PortAddress from;
        /// None where the question names an address: then all ports that send count.
        std::optional<unsigned> to;
        board::FrameKind frame;
        board::PathExplanation explanation;
        /// By the document.
        board::Intent::Answer wanted;
    };

    /// What gets out of the board, or of the port that the question names.
    struct Delivery {
        chips::PortAddress at;
        board::FrameKind::Tags tags;
    };

    /// All of them must outlive the object.
    FrameWay(simulation::SimulatedBoard& board, board::Intent const& intent, board::Cables const& cables);

    /// Once. Throws ToolError (usage) when the board has no such port, or no cables lead from one switch to
    /// the other.
    void follow(chips::PortAddress const& from, FrameQuestion const& question);

    /// At least one.
    std::vector<Hop> const& getHops() const { return _hops; }
    std::vector<Delivery> const& getDeliveries() const { return _deliveries; }

private:
    using Route = std::vector<chips::PortAddress>;
    /// Where it enters a switch, and how.
    struct Stage {
        chips::PortAddress at;
        board::FrameKind::Tags tags;
        /// The ports by which it left switches before.
        Route route;
    };

    void requirePort(chips::PortAddress const& port) const;
    simulation::Decision decide(chips::PortAddress const& from, board::FrameKind const& frame) const;
    void followAll(chips::PortAddress const& from, board::FrameKind const& frame);
    void followRoute(chips::PortAddress const& from, board::FrameKind frame, Route const& exits);
    Route findDelivery(chips::PortAddress const& from, board::FrameKind frame,
                       chips::PortAddress const& to) const;
    Route routeOf(unsigned from, chips::PortAddress const& to) const;
    void add(chips::PortAddress const& from, std::optional<unsigned> to, board::FrameKind const& frame);
    std::vector<unsigned> vidsOf(chips::PortAddress const& from, std::optional<unsigned> to) const;

    simulation::SimulatedBoard& _board;
    board::Intent const& _intent;
    board::Cables const& _cables;
    board::RegisterPaths const _registers;
    std::vector<Hop> _hops;
    std::vector<Delivery> _deliveries;
};

} // namespace switchctl::explain
