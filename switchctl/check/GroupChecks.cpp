#include "switchctl/check/CheckTable.hpp"

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "switchctl/check/GroupAddress.hpp"

namespace switchctl::check {

namespace {

using Group = board::BoardReading::Group;
using Member = board::BoardReading::Member;
using Outcome = board::BoardReading::Outcome;

template <typename Use> void forEachMember(board::BoardReading const& board, Outcome outcome, Use use) {
    for (Group const& group : board.getGroups()) {
        for (Member const& member : group.members) {
            if (member.outcome == outcome) {
                use(group, member);
            }
        }
    }
}

std::string nameOf(Group const& group) {
    return "group " + group.address + " of " + group.getVlanName();
}

void notMulticast(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//forwardedMulticastGroup")) {
        std::string const text = board::content(element);
        if (!GroupAddress::fromText(text)) {
            report(element,
                   "\"" + text +
                       "\" is no IPv4 multicast address, which the library does not check: it makes a "
                       "hardware address "
                       "of whatever numbers it reads after the first one, and no frame meets what is meant.",
                   "Write an address from 224.0.0.0 to 239.255.255.255 as four decimal numbers.");
        }
    }
}

void blanksInAddress(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//forwardedMulticastGroup")) {
        std::string const text = board::content(element);
        if (text.find_first_of(" \t\r\n") != std::string::npos && GroupAddress::fromText(text)) {
            report(element,
                   "The library compares group addresses as texts, blanks and line ends included: the same "
                   "address "
                   "written without them is another group.",
                   "Write the address directly between the tags.");
        }
    }
}

bool isPort(xmlNodePtr element) {
    return board::isNamed(element, "port") &&
           (board::isNamed(element->parent, "vlan") || board::isNamed(element->parent, "switch"));
}

void misplaced(board::BoardReading const& board, Report const& report) {
    for (xmlNodePtr const element : board.find("//forwardedMulticastGroup")) {
        if (!isPort(element->parent)) {
            report(element,
                   "The library takes the ports of a group from the elements around it, and these are not "
                   "the port of "
                   "a VLAN or of a switch: the group gets a port only by accident.",
                   "Move it into the <port> of a <vlan> or of a <switch>.");
        }
    }
}

void memberUnknown(board::BoardReading const& board, Report const& report) {
    for (Outcome const outcome : {Outcome::unknownSwitch, Outcome::unknownPort}) {
        forEachMember(board, outcome, [&](Group const& group, Member const& member) {
            if (!isPort(member.element->parent)) {
                return; // group-misplaced
            }
            report(member.element,
                   "The library reports an unknown " +
                       (outcome == Outcome::unknownSwitch
                            ? "switch " + std::to_string(member.switchId)
                            : "port " + board::portAddress(member.switchId, member.portId)) +
                       " and leaves it out of " + nameOf(group) + ".",
                   "Write it under a port that the board has.");
        });
    }
}

void numberTaken(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::numberTaken, [&](Group const& group, Member const& member) {
        report(member.element,
               "A group tells its ports apart by number alone: " + nameOf(group) +
                   " already has another switch's port " + std::to_string(member.portId) + ", and port " +
                   board::portAddress(member.switchId, member.portId) + " is left out without a message.",
               "Use ports of different numbers on all switches of a group.");
    });
}

void twice(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::twice, [&](Group const& group, Member const& member) {
        report(member.element,
               "Port " + board::portAddress(member.switchId, member.portId) + " is in " + nameOf(group) +
                   " already; the library ignores this element.",
               "Leave one of the two out.");
    });
}

void unsupported(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::added, [&](Group const& group, Member const& member) {
        if (board.getSwitch(member.switchId)->isMarvell()) {
            report(member.element,
                   "The driver of the 88E6096 filters no groups and says so at level 1: frames to " +
                       group.address + " go to all ports of their VLAN.",
                   "Nothing to do when that is meant; otherwise give the group's receivers a VLAN of their "
                   "own.");
        }
    });
}

void withoutVlan(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::added, [&](Group const& group, Member const& member) {
        if (board.getSwitch(member.switchId)->isVitesse() && group.vlanId == 0) {
            report(member.element,
                   "The group is of VLAN 0, in which a VSC7390 puts no frame: its entry does not meet the "
                   "frames of "
                   "VLAN 1 and others.",
                   "Write it under the ports of a <vlan> whose id is a decimal number above 0.");
        }
    });
}

/// Whether the chip has the port in the tag-based VLAN.
bool isInVlan(board::BoardReading const& board, unsigned int vlanId, Member const& candidate) {
    auto const memberships = board.membershipsOf(static_cast<unsigned int>(candidate.switchId),
                                                 static_cast<unsigned int>(candidate.portId));
    auto const found = memberships.find(vlanId);
    return found != memberships.end() && board.getVlans().at(vlanId).tagBased &&
           found->second->hasKnownTags();
}

void outsideVlan(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::added, [&](Group const& group, Member const& member) {
        if (board.getSwitch(member.switchId)->isVitesse() && group.vlanId != 0 &&
            !isInVlan(board, group.vlanId, member)) {
            report(member.element,
                   "Port " + board::portAddress(member.switchId, member.portId) + " is not in " +
                       group.getVlanName() + " and gets the frames of its group " + group.address +
                       " all the same: a VSC7390 likely does not ask for the VLAN where the library has "
                       "listed a group's ports.",
                   "Nothing to do when that is meant; otherwise write the group under ports of its VLAN.");
        }
    });
}

} // namespace

std::vector<Check> groupChecks() {
    return {
        {"group-not-multicast", Severity::error, "a group address that is not IPv4 multicast", notMulticast},
        {"group-blanks-in-address", Severity::warning, "a group address with blanks around it",
         blanksInAddress},
        {"group-misplaced", Severity::error, "a group that is not under a port", misplaced},
        {"group-member-unknown", Severity::error, "a group under a port that is not there", memberUnknown},
        {"group-number-taken", Severity::error, "one port number from two switches in one group",
         numberTaken},
        {"group-twice", Severity::warning, "a group that a port has twice", twice},
        {"group-unsupported", Severity::note, "a group on an 88E6096", unsupported},
        {"group-without-vlan", Severity::warning, "a group of VLAN 0 on a VSC7390", withoutVlan},
        {"vsc7390-group-outside-vlan", Severity::note, "a group's receiver outside the group's VLAN",
         outsideVlan},
    };
}

} // namespace switchctl::check
