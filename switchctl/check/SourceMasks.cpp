#include "switchctl/check/SourceMasks.hpp"

#include <algorithm>

#include "board/Element.hpp"

namespace switchctl::check {

SourceMasks::SourceMasks(board::BoardReading const& board, board::BoardReading::Switch const& owner)
    : _owner(owner) {
    _rewritten = std::any_of(owner.ports.begin(), owner.ports.end(), [&](auto const& entry) {
        return entry.first < owner.portsOfChip() && entry.second.hasLinkSettings();
    });
    if (_rewritten) {
        followLinks();
    } else {
        followVlans(board);
    }
    keepTrunksApart();
}

bool SourceMasks::isOpen(unsigned int from, unsigned int to) const {
    auto const mask = _open.find(from);
    return mask != _open.end() && mask->second.count(to) != 0;
}

void SourceMasks::followLinks() {
    for (auto const& [from, sender] : _owner.ports) {
        for (auto const& [to, receiver] : _owner.ports) {
            if (from != to && sender.comesUp() && receiver.comesUp()) {
                _open[from].insert(to);
            }
        }
    }
}

void SourceMasks::followVlans(board::BoardReading const& board) {
    // The library clears as many masks as it counts ports. The others are as the chip resets them: open.
    for (unsigned int from = _owner.entryCount; from < _owner.portsOfChip(); ++from) {
        for (unsigned int to = 0; to < _owner.portsOfChip(); ++to) {
            if (from != to) {
                _open[from].insert(to);
            }
        }
    }
    for (auto const& [id, vlan] : board.getVlans()) {
        for (board::BoardReading::Member const* const from :
             board::BoardReading::addedMembers(vlan.members, _owner.id)) {
            for (board::BoardReading::Member const& to : vlan.members) {
                if (!vlan.tagBased && to.outcome == board::BoardReading::Outcome::added &&
                    to.portId != from->portId) {
                    _open[static_cast<unsigned int>(from->portId)].insert(
                        static_cast<unsigned int>(to.portId));
                }
            }
        }
    }
}

void SourceMasks::keepTrunksApart() {
    for (board::BoardReading::Trunk const& trunk : _owner.trunks) {
        for (xmlNodePtr const from : trunk.members) {
            for (xmlNodePtr const to : trunk.members) {
                _open[static_cast<unsigned int>(board::numberOr(from, "id", -1))].erase(
                    static_cast<unsigned int>(board::numberOr(to, "id", -1)));
            }
        }
    }
}

} // namespace switchctl::check
