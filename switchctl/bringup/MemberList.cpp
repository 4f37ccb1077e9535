#include "switchctl/bringup/MemberList.hpp"

#include <libxml/tree.h>

#include <set>

#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "model/ManagedSwitch.hpp"

namespace switchctl::bringup {

namespace {

bool hasPort(SwitchManager& manager, MemberList::Member const& member) {
    ManagedSwitch* const managedSwitch = manager.getManagedSwitch(static_cast<unsigned int>(member.switchId));
    return managedSwitch != nullptr &&
           managedSwitch->getPorts().count(static_cast<unsigned int>(member.portId)) != 0;
}

} // namespace

MemberList::MemberList(std::vector<Member> const& members, SwitchManager& manager, bool withTags) {
    std::set<int> portIds;
    for (Member const& member : members) {
        bool const counts = hasPort(manager, member) && portIds.insert(member.portId).second &&
                            (!withTags || member.hasKnownTags());
        (counts ? counted : leftOut).push_back(member);
    }
}

std::string MemberList::nameOf(Member const& member, board::Labels const& labels) {
    if (member.switchId >= 0 && member.portId >= 0) {
        return labels.nameOf(board::portAddress(member.switchId, member.portId));
    }
    std::string const line = "line " + std::to_string(xmlGetLineNo(member.element));
    return line + (member.switchId >= 0 ? " (no port)"
                   : member.portId >= 0 ? " (no switch)"
                                        : " (no switch, no port)");
}

std::string MemberList::tagOf(Member const& member, char const* attribute) {
    std::string const text = board::attribute(member.element, attribute).value_or("");
    return text.empty() ? "none" : text;
}

} // namespace switchctl::bringup
