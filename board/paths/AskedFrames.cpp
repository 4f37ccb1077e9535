#include "board/paths/AskedFrames.hpp"

#include <algorithm>
#include <set>

namespace board {

AskedFrames::AskedFrames(IntendedBoard const& board, BoardReading const& reading,
                         std::set<unsigned> const& more) {
    std::set<unsigned> vids{0, 1};
    auto const add = [&vids](unsigned vid) {
        if (vid <= BoardReading::highestVlanId) {
            vids.insert(vid);
        }
    };
    for (unsigned const vid : more) {
        add(vid);
    }
    for (auto const& [id, vlan] : board.getVlans()) {
        add(id);
    }
    for (auto const& [id, vlan] : reading.getVlans()) {
        add(id);
    }
    for (BoardReading::Group const& group : reading.getGroups()) {
        add(group.vlanId);
    }
    // A document that names all of them leaves none unknown; then the highest is asked once.
    _unknownVid = BoardReading::highestVlanId;
    while (vids.count(_unknownVid) != 0 && _unknownVid > 1) {
        --_unknownVid;
    }
    vids.insert(_unknownVid);
    _tags.push_back(FrameKind::Tags::none());
    for (unsigned const vid : vids) {
        _tags.push_back(FrameKind::Tags::one(vid));
    }
    _destinations = {{FrameKind::Destination::unicast, 0, "unicast"},
                     {FrameKind::Destination::broadcast, 0, "broadcast"}};
    std::set<std::uint64_t> groups;
    for (IntendedBoard::Group const& group : board.getGroups()) {
        if (groups.insert(group.hardwareAddress).second) {
            _destinations.push_back(
                {FrameKind::Destination::group, group.hardwareAddress, "group " + group.address});
        }
    }
}

void AskedFrames::add(AskedFrames const& others) {
    std::set<FrameKind::Tags> tags(_tags.begin(), _tags.end());
    tags.insert(others._tags.begin(), others._tags.end());
    _tags.assign(tags.begin(), tags.end());
    for (Destination const& other : others._destinations) {
        bool const isKnown =
            std::any_of(_destinations.begin(), _destinations.end(), [&](Destination const& own) {
                return own.kind == other.kind && own.group == other.group;
            });
        if (!isKnown) {
            _destinations.push_back(other);
        }
    }
}

FrameKind AskedFrames::getFrame(std::size_t tags, std::size_t destination) const {
    Destination const& to = _destinations.at(destination);
    return {_tags.at(tags), to.kind, to.group};
}

} // namespace board
