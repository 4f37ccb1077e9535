#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/Cables.hpp"
#include "board/paths/PathExplanation.hpp"
#include "board/paths/RegisterPaths.hpp"
#include "chips/PortAddress.hpp"
#include "switchctl/explain/FrameQuestion.hpp"

namespace switchctl::explain {

/// The way of a frame through one switch after the other, until it is where it should be or stops.
class FrameWay {
public:
    struct Hop {
        chips::PortAddress from;
        /// None where the question names an address: then all ports that send count.
        std::optional<unsigned> to;
        board::FrameKind frame;
        board::PathExplanation explanation;
        board::Intent::Answer wanted;
    };

    /// All of them must outlive the object. Throws ToolError (usage) when the board has no such port, or
    /// no cables lead from one switch to the other.
    FrameWay(board::ModelBringUp& bringUp, board::Intent const& intent, board::Cables const& cables);

    void follow(chips::PortAddress const& from, FrameQuestion const& question);

    std::vector<Hop> const& getHops() const { return _hops; }
    bool isDelivered() const;

private:
    void requirePort(chips::PortAddress const& port) const;
    std::vector<chips::PortAddress> routeOf(unsigned from, unsigned to) const;
    void add(chips::PortAddress const& from, std::optional<unsigned> to, board::FrameKind const& frame);
    std::vector<unsigned> vidsOf(chips::PortAddress const& from, unsigned to) const;

    board::ModelBringUp& _bringUp;
    board::Intent const& _intent;
    board::Cables const& _cables;
    board::RegisterPaths const _registers;
    std::vector<Hop> _hops;
};

} // namespace switchctl::explain
