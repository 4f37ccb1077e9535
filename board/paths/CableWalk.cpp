#include "board/paths/CableWalk.hpp"

#include <algorithm>
#include <iterator>

namespace board {

CableWalk::Result CableWalk::run(Place const& from, FrameKind::Tags const& tags) const {
    Progress progress;
    enter({from, tags}, true, progress);
    return progress.result;
}

bool CableWalk::isLoop(Stage const& stage, Progress& progress) {
    auto const before = std::find(progress.way.begin(), progress.way.end(), stage);
    if (before == progress.way.end()) {
        return false;
    }
    if (progress.result.loop.empty()) {
        std::transform(before, progress.way.end(), std::back_inserter(progress.result.loop),
                       [](Stage const& passed) { return passed.first; });
    }
    return true;
}

void CableWalk::enter(Stage const& stage, bool isCertain, Progress& progress) const {
    if (isLoop(stage, progress)) {
        return;
    }
    auto const [entry, isNew] = progress.seen.emplace(stage, isCertain);
    if (!isNew && (entry->second || !isCertain)) {
        return;
    }
    entry->second = isCertain;
    progress.way.push_back(stage);
    // Stations of the first switch get the frame without a cable.
    PortSet const counted = progress.way.size() == 1 ? _cables.getPorts(stage.first.first) : ~PortSet{0};
    for (Copies const& copies : _step(stage.first, stage.second)) {
        PortSet ports = copies.ports & counted;
        for (unsigned port = 0; ports != 0; ++port, ports >>= 1U) {
            if ((ports & 1U) != 0) {
                leave({{stage.first.first, port}, copies.tags}, isCertain && copies.isCertain, progress);
            }
        }
    }
    progress.way.pop_back();
}

void CableWalk::leave(Stage const& stage, bool isCertain, Progress& progress) const {
    Place const& at = stage.first;
    if (auto const other = _cables.follow({at.first, at.second})) {
        enter({{other->switchId, other->portId}, stage.second}, isCertain, progress);
    } else {
        bool& certain = progress.result.arrivals[at][stage.second];
        certain = certain || isCertain;
    }
}

} // namespace board
