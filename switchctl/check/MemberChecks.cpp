#include "switchctl/check/CheckTable.hpp"

#include <set>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace switchctl::check {

namespace {

using Member = board::BoardReading::Member;
using Outcome = board::BoardReading::Outcome;
using Vlan = board::BoardReading::Vlan;

template <typename Use> void forEachMember(board::BoardReading const& board, Outcome outcome, Use use) {
    for (auto const& [id, vlan] : board.getVlans()) {
        for (Member const& member : vlan.members) {
            if (member.outcome == outcome) {
                use(vlan, member);
            }
        }
    }
}

void switchUnknown(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::unknownSwitch, [&](Vlan const& vlan, Member const& member) {
        report(member.element,
               "The library knows no switch " + std::to_string(member.switchId) + " (switchId is " +
                   board::quotedAttribute(member.element, "switchId") +
                   "), reports it and leaves the member out of " + vlan.getName() + ".",
               "Write the id of a <switch>, in decimal digits.");
    });
}

void portUnknown(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::unknownPort, [&](Vlan const& vlan, Member const& member) {
        report(member.element,
               (member.portId == board::BoardReading::noNumber
                    ? "The member has no port number"
                    : "Switch " + std::to_string(member.switchId) + " has no port " +
                          std::to_string(member.portId)) +
                   " (portId is " + board::quotedAttribute(member.element, "portId") +
                   "): the library reports it and leaves the member out of " + vlan.getName() + ".",
               "Add the port to the switch, or write the id of a port that it has.");
    });
}

void numberTaken(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::numberTaken, [&](Vlan const& vlan, Member const& member) {
        report(
            member.element,
            "A VLAN tells its members apart by port number alone: " + vlan.getName() +
                " already has another switch's port " + std::to_string(member.portId) + ", and port " +
                board::portAddress(member.switchId, member.portId) + " is left out without a message.",
            "Use ports of different numbers on all switches of a VLAN, both ends of an interlink included.");
    });
}

void twice(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::twice, [&](Vlan const& vlan, Member const& member) {
        report(member.element,
               "Port " + board::portAddress(member.switchId, member.portId) + " is in " + vlan.getName() +
                   " already; the library ignores this element and its settings.",
               "Leave one of the two out.");
    });
}

std::set<int> switchesOf(Vlan const& vlan) {
    std::set<int> switches;
    for (Member const& member : vlan.members) {
        if (member.outcome == Outcome::added) {
            switches.insert(member.switchId);
        }
    }
    return switches;
}

void acrossSwitches(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, vlan] : board.getVlans()) {
        std::set<int> const switches = switchesOf(vlan);
        if (vlan.tagBased || switches.size() < 2) {
            continue;
        }
        std::vector<std::string> names;
        names.reserve(switches.size());
        for (int const switchId : switches) {
            names.push_back(std::to_string(switchId));
        }
        report(
            vlan.element,
            "The VLAN is port-based and has members on the switches " + board::listed(names) +
                ". A chip can route to its own ports only: each member opens a way to the ports of its own "
                "switch that have the other members' numbers.",
            "Write a port-based VLAN for each switch, or a tag-based one.");
    }
}

void attributesIgnored(board::BoardReading const& board, Report const& report) {
    for (auto const& [id, vlan] : board.getVlans()) {
        for (Member const& member : vlan.members) {
            bool const known =
                member.outcome != Outcome::unknownSwitch && member.outcome != Outcome::unknownPort;
            bool const tags =
                board::attribute(member.element, "ingress") || board::attribute(member.element, "egress");
            if (!vlan.tagBased && known && tags) {
                report(member.element,
                       "The VLAN is port-based: the library warns and ignores ingress and egress.",
                       "Leave them out, or write typeOfVlan=\"tagBasedVlan\".");
            }
        }
    }
}

bool isOneOf(std::string const& text, std::set<std::string> const& texts) {
    return texts.count(text) != 0;
}

void attributesAbsent(board::BoardReading const& board, Report const& report) {
    forEachMember(board, Outcome::added, [&](Vlan const& vlan, Member const& member) {
        for (char const* const name : {"ingress", "egress"}) {
            if (vlan.tagBased && !board::attribute(member.element, name)) {
                report(member.element,
                       std::string("The library reports that the member has no attribute ") + name +
                           ", and later that it could not add the port: it is not in " + vlan.getName() + ".",
                       "Write ingress=\"addTag\", \"validateTag\" or \"addTagIfUntagged\", and "
                       "egress=\"stripTag\" or \"validateTag\".");
            }
        }
    });
}

void attributesUnknown(board::BoardReading const& board, Report const& report) {
    static std::set<std::string> const ingresses{"addTag", "validateTag", "addTagIfUntagged"};
    static std::set<std::string> const egresses{"stripTag", "validateTag"};
    forEachMember(board, Outcome::added, [&](Vlan const& vlan, Member const& member) {
        std::optional<std::string> const ingress = board::attribute(member.element, "ingress");
        std::optional<std::string> const egress = board::attribute(member.element, "egress");
        if (vlan.tagBased && ingress && !isOneOf(*ingress, ingresses)) {
            report(member.element,
                   "The library knows no ingress=\"" + *ingress +
                       "\": it reports that it could not add the port, which is not in " + vlan.getName() +
                       ".",
                   R"(Write ingress="addTag", "validateTag" or "addTagIfUntagged".)");
        }
        if (vlan.tagBased && egress && !isOneOf(*egress, egresses)) {
            report(member.element,
                   "The library knows no egress=\"" + *egress +
                       "\": it reports that it could not add the port, which is not in " + vlan.getName() +
                       " though its ingress has been set up for it.",
                   R"(Write egress="stripTag" or "validateTag".)");
        }
    });
}

} // namespace

std::vector<Check> memberChecks() {
    return {
        {"member-switch-unknown", Severity::error, "a member on a switch that is not there", switchUnknown},
        {"member-port-unknown", Severity::error, "a member port that its switch does not have", portUnknown},
        {"member-number-taken", Severity::error, "one port number from two switches in one VLAN",
         numberTaken},
        {"member-twice", Severity::warning, "a port that a VLAN lists twice", twice},
        {"port-based-across-switches", Severity::error, "a port-based VLAN with members on several switches",
         acrossSwitches},
        {"tag-attribute-ignored", Severity::warning, "ingress or egress in a port-based VLAN",
         attributesIgnored},
        {"tag-attribute-absent", Severity::error, "a tag-based member without ingress or egress",
         attributesAbsent},
        {"tag-attribute-unknown", Severity::error, "an ingress or egress that the library does not know",
         attributesUnknown},
    };
}

} // namespace switchctl::check
