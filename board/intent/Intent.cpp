#include "board/intent/Intent.hpp"

namespace board {

namespace {

constexpr PortSet only(unsigned port) {
    return PortSet{1} << port;
}

} // namespace

FrameKind::Tags Intent::Answer::tagsAt(unsigned port, FrameKind::Tags const& received) const {
    if ((untagged & only(port)) != 0) {
        return FrameKind::Tags::none();
    }
    return (tagged & only(port)) != 0 ? FrameKind::Tags::one(vlan.value_or(0)) : received;
}

std::optional<unsigned> Intent::vlanOf(Port const& port, FrameKind::Tags const& tags) {
    // The lowest id serves where several add tags.
    auto const first = [&](IntendedBoard::Ingress ingress) -> std::optional<unsigned> {
        for (auto const& [vlan, membership] : port.memberships) {
            if (membership.ingress == ingress) {
                return vlan;
            }
        }
        return std::nullopt;
    };
    if (auto const always = first(IntendedBoard::Ingress::addTag)) {
        return always;
    }
    if (tags.count > 0 && tags.vid != 0) {
        return port.memberships.count(tags.vid) != 0 ? std::optional(tags.vid) : std::nullopt;
    }
    return first(IntendedBoard::Ingress::addTagIfUntagged);
}

Intent::Answer Intent::ask(unsigned switchId, unsigned port, FrameKind const& frame) const {
    Switch const& owner = _board.getSwitches().at(switchId);
    Port const& from = owner.ports.at(port);
    Answer answer;
    answer.vlan = vlanOf(from, frame.tags);
    if ((owner.open & only(port)) == 0) {
        return answer;
    }
    PortSet const others = owner.open & ~only(port) & ~from.trunk;
    if (answer.vlan) {
        addByTags(answer, owner, port, others);
    } else {
        addByPorts(answer, from, frame, others);
    }
    if (frame.destination == FrameKind::Destination::group) {
        restrictGroup(answer, owner, frame);
    }
    return answer;
}

void Intent::addByTags(Answer& answer, Switch const& owner, unsigned port, PortSet open) {
    IntendedBoard::Members const& members = owner.vlans.at(*answer.vlan);
    PortSet const receivers = members.all & open;
    PortSet const byTagsAlone = (owner.inPortVlans & only(port)) != 0 ? 0 : ~owner.inPortVlans;
    answer.must = receivers & (byTagsAlone | owner.ports[port].partners);
    answer.may = receivers & ~answer.must;
    answer.untagged = receivers & members.stripping;
    answer.tagged = receivers & ~members.stripping;
}

void Intent::addByPorts(Answer& answer, Port const& from, FrameKind const& frame, PortSet open) {
    PortSet const receivers = from.partners & open;
    if (from.memberships.empty() && frame.tags.count == 0) {
        answer.must = receivers;
        answer.untagged = receivers;
    } else {
        answer.may = receivers;
    }
}

void Intent::restrictGroup(Answer& answer, Switch const& owner, FrameKind const& frame) const {
    for (IntendedBoard::Group const& group : _board.getGroups()) {
        if (group.hardwareAddress != frame.address || group.vlan != answer.vlan) {
            continue;
        }
        auto const members = group.members.find(owner.id);
        PortSet const listed = members == group.members.end() ? 0 : members->second;
        PortSet const others = answer.allowed() & ~listed;
        answer.must &= listed;
        answer.unfiltered = owner.filtersGroups ? 0 : others;
        answer.may = (answer.may & listed) | answer.unfiltered;
        return;
    }
}

Intent::Reason Intent::explain(unsigned switchId, unsigned port, FrameKind const& frame, Answer const& answer,
                               unsigned to) const {
    Switch const& owner = _board.getSwitches().at(switchId);
    Port const& from = owner.ports.at(port);
    Port const& receiver = owner.ports.at(to);
    if ((answer.must & only(to)) != 0) {
        return answer.vlan ? Reason::inVlan : Reason::inPortVlan;
    }
    if ((answer.may & only(to)) != 0) {
        return (answer.unfiltered & only(to)) != 0 ? Reason::groupNotFiltered : Reason::undecided;
    }
    if ((owner.open & only(port)) == 0) {
        return from.isListed ? Reason::senderNotForwarding : Reason::senderNotListed;
    }
    if ((owner.open & only(to)) == 0) {
        return receiver.isListed ? Reason::receiverNotForwarding : Reason::receiverNotListed;
    }
    if (to == port) {
        return Reason::samePort;
    }
    if ((from.trunk & only(to)) != 0) {
        return Reason::sameTrunk;
    }
    if (!answer.vlan) {
        return frame.destination == FrameKind::Destination::group && (from.partners & only(to)) != 0
                   ? Reason::receiverNotInGroup
                   : Reason::frameInNoVlan;
    }
    return receiver.memberships.count(*answer.vlan) != 0 ? Reason::receiverNotInGroup
                                                         : Reason::receiverNotInVlan;
}

char const* Intent::describe(Reason reason) {
    switch (reason) {
    case Reason::inVlan:
        return "both are in the frame's VLAN";
    case Reason::inPortVlan:
        return "a port-based VLAN has both";
    case Reason::undecided:
        return "VLANs by tags and by ports say two things";
    case Reason::groupNotFiltered:
        return "the chip's driver filters no groups";
    case Reason::senderNotListed:
        return "the document does not list the sender";
    case Reason::senderNotForwarding:
        return "the sender's portStatus is not \"forwarding\"";
    case Reason::receiverNotListed:
        return "the document does not list the receiver";
    case Reason::receiverNotForwarding:
        return "the receiver's portStatus is not \"forwarding\"";
    case Reason::samePort:
        return "a frame does not go back where it came from";
    case Reason::sameTrunk:
        return "members of one trunk do not send to one another";
    case Reason::frameInNoVlan:
        return "the frame belongs to no VLAN";
    case Reason::receiverNotInVlan:
        return "the receiver is not in the frame's VLAN";
    case Reason::receiverNotInGroup:
        return "the receiver is not listed for the group";
    }
    return "";
}

} // namespace board
