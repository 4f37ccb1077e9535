#pragma once

#include <map>
#include <utility>
#include <vector>

#include "board/paths/AskedFrames.hpp"
#include "board/paths/PathLine.hpp"

namespace board {

/// Puts single facts - this port, with this frame, reaches those - together into as few lines as ports and
/// frames that act alike allow.
class PathGrouping {
public:
    /// `frames` must outlive the object.
    explicit PathGrouping(AskedFrames const& frames) : _frames(frames) {}

    /// Facts of one port and frame come one after the other.
    /// \param tags, destination indices of the frames asked.
    void add(PathLine::Key const& key, std::size_t tags, std::size_t destination, unsigned from,
             PathLine::Reach const& reach);

    /// By key.
    std::vector<PathLine> getLines() const;

private:
    using ReachList = std::vector<PathLine::Reach>;
    using FromTo = std::pair<PortSet, ReachList>;
    using Senders = std::vector<std::pair<unsigned, ReachList>>;
    // By index of the destination and of the tags.
    using Facts = std::map<std::pair<std::size_t, std::size_t>, Senders>;

    static void add(ReachList& list, PathLine::Reach const& more);
    static std::vector<FromTo> merge(Senders const& senders);
    void append(PathLine::Key const& key, Facts const& facts, std::vector<PathLine>& lines) const;

    AskedFrames const& _frames;
    std::map<PathLine::Key, Facts> _facts;
};

} // namespace board
