#include "board/paths/PathGrouping.hpp"

#include <algorithm>

namespace board {

namespace {

// A single sender is not among those that it reaches.
std::vector<PathLine::Reach> without(std::vector<PathLine::Reach> const& list, PortSet sender) {
    std::vector<PathLine::Reach> others;
    for (PathLine::Reach const& reach : list) {
        if ((reach.to & ~sender) != 0) {
            others.push_back({reach.form, reach.to & ~sender});
        }
    }
    return others;
}

} // namespace

void PathGrouping::add(PathLine::Key const& key, std::size_t tags, std::size_t destination, unsigned from,
                       PathLine::Reach const& reach) {
    if (reach.to == 0) {
        return;
    }
    Senders& senders = _facts[key][{destination, tags}];
    if (senders.empty() || senders.back().first != from) {
        senders.emplace_back(from, ReachList());
    }
    add(senders.back().second, reach);
}

// By form, each form once.
void PathGrouping::add(ReachList& list, PathLine::Reach const& more) {
    auto const place =
        std::lower_bound(list.begin(), list.end(), more.form,
                         [](auto const& entry, auto const& form) { return entry.form < form; });
    if (place != list.end() && place->form == more.form) {
        place->to |= more.to;
    } else {
        list.insert(place, more);
    }
}

// Ports that reach one another and the same others act alike, though none reaches itself: each counts as
// reaching itself in the form in which others reach it.
std::vector<PathGrouping::FromTo> PathGrouping::merge(Senders const& senders) {
    ReachList reached;
    for (auto const& [from, list] : senders) {
        for (PathLine::Reach const& reach : list) {
            add(reached, reach);
        }
    }
    std::map<ReachList, PortSet> fromByReach;
    std::vector<FromTo> merged;
    for (auto const& [from, list] : senders) {
        PortSet const self = PortSet{1} << from;
        if ((PathLine::portsOf(list) & self) != 0) {
            merged.emplace_back(self, list);
            continue;
        }
        ReachList completed = list;
        for (PathLine::Reach const& reach : reached) {
            if ((reach.to & self) != 0) {
                add(completed, {reach.form, self});
            }
        }
        fromByReach[completed] |= self;
    }
    // Others act alike when they reach the same, but not one another.
    std::map<ReachList, PortSet> alone;
    for (auto const& [list, from] : fromByReach) {
        if ((from & (from - 1)) == 0) {
            alone[without(list, from)] |= from;
        } else {
            merged.emplace_back(from, list);
        }
    }
    for (auto const& [list, from] : alone) {
        merged.emplace_back(from, list);
    }
    return merged;
}

void PathGrouping::append(PathLine::Key const& key, Facts const& facts, std::vector<PathLine>& lines) const {
    std::map<FromTo, std::map<std::size_t, std::vector<std::size_t>>> tagsByDestination;
    for (auto const& [frame, senders] : facts) {
        for (FromTo const& fromTo : merge(senders)) {
            tagsByDestination[fromTo][frame.first].push_back(frame.second);
        }
    }
    for (auto const& [fromTo, byDestination] : tagsByDestination) {
        std::map<std::vector<std::size_t>, std::vector<std::size_t>> destinationsByTags;
        for (auto const& [destination, tags] : byDestination) {
            destinationsByTags[tags].push_back(destination);
        }
        for (auto const& [tags, destinations] : destinationsByTags) {
            PathLine line{key, fromTo.first, fromTo.second, {}, destinations};
            for (std::size_t const index : tags) {
                line.frames.push_back(_frames.getTags()[index]);
            }
            lines.push_back(std::move(line));
        }
    }
}

std::vector<PathLine> PathGrouping::getLines() const {
    std::vector<PathLine> lines;
    for (auto const& [key, facts] : _facts) {
        append(key, facts, lines);
    }
    return lines;
}

} // namespace board
