#include "board/paths/RegisterPaths.hpp"

#include <algorithm>

#include "simulation/network/ChipForwarding.hpp"

namespace board {

using simulation::EthernetFrame;

namespace {

constexpr EthernetFrame::Address unknownStation = 0x0200000000FE;
constexpr EthernetFrame::Address firstSource = 0x020000000010;
constexpr unsigned etherType = 0x88B5; // for experiments (IEEE 802)

EthernetFrame::Address destinationOf(FrameKind const& kind) {
    switch (kind.destination) {
    case FrameKind::Destination::unicast:
        return kind.address == 0 ? unknownStation : kind.address;
    case FrameKind::Destination::broadcast:
        return EthernetFrame::broadcastAddress;
    case FrameKind::Destination::group:
        return kind.address;
    }
    return 0;
}

EthernetFrame::Tag tagOf(unsigned vid) {
    EthernetFrame::Tag tag;
    tag.vid = vid;
    return tag;
}

} // namespace

RegisterPaths::RegisterPaths(Chips const& chips) {
    for (auto const& [id, chip] : chips) {
        simulation::ChipForwarding* const forwarding = chip->getForwarding();
        if (forwarding == nullptr) {
            continue;
        }
        for (unsigned port = 0; port < forwarding->getNumberOfPorts(); ++port) {
            chip->plugLink(port);
        }
        _chips.emplace(id, forwarding);
    }
}

RegisterPaths::Chips RegisterPaths::chipsOf(simulation::SimulatedBoard& board) {
    Chips chips;
    for (unsigned const id : board.getSwitchIds()) {
        chips.emplace(id, &board.getChip(id));
    }
    return chips;
}

EthernetFrame RegisterPaths::frameOf(FrameKind const& kind, unsigned flow) {
    EthernetFrame frame = EthernetFrame::make(destinationOf(kind), firstSource + flow, etherType);
    if (kind.tags.count > 1) {
        frame = frame.withTagPushed(tagOf(kind.tags.inner));
    }
    return kind.tags.count > 0 ? frame.withTagPushed(tagOf(kind.tags.vid)) : frame;
}

FrameKind::Tags RegisterPaths::tagsOf(EthernetFrame const& frame) {
    auto const outer = frame.getTag();
    if (!outer) {
        return FrameKind::Tags::none();
    }
    if (frame.countTags() == 1) {
        return FrameKind::Tags::one(outer->vid);
    }
    return {2, outer->vid, frame.withTagPopped().getTag()->vid};
}

void RegisterPaths::add(std::vector<Copies>& list, Copies const& more) {
    auto const entry =
        std::find_if(list.begin(), list.end(), [&](Copies const& other) { return other.tags == more.tags; });
    if (entry != list.end()) {
        entry->ports |= more.ports;
    } else {
        list.push_back(more);
    }
}

std::vector<RegisterPaths::Copies> RegisterPaths::copiesOf(simulation::Decision const& decision) {
    std::vector<Copies> copies;
    for (simulation::Decision::Egress const& egress : decision.egress) {
        add(copies, {tagsOf(egress.frame), PortSet{1} << egress.port});
    }
    return copies;
}

} // namespace board
