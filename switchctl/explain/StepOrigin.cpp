#include "switchctl/explain/StepOrigin.hpp"

#include <algorithm>
#include <iterator>

namespace switchctl::explain {

// Rules without an entry are about what no document writes.
std::optional<StepOrigin::Element> StepOrigin::elementOf(std::string_view rule) {
    struct Row {
        std::string_view rule;
        Element element;
    };
    static constexpr Row rows[] = {
        {"M1", Element::sender},
        {"M3", Element::sender},
        {"M5", Element::sender},
        {"M7", Element::senderInVlan},
        {"M8", Element::vlan},
        {"M10", Element::sender},
        {"M12", Element::receiverInVlan},
        {"M13", Element::receiver},
        {"M14", Element::receiverInVlan},
        {"V1", Element::sender},
        {"V4", Element::senderInVlan},
        {"V5", Element::senderInVlan},
        {"V6", Element::sender},
        {"V7", Element::senderInVlan},
        {"V10", Element::receiverInVlan},
        {"V11", Element::receiver},
        {"V12", Element::receiverInVlan},
    };
    auto const* const found =
        std::find_if(std::begin(rows), std::end(rows), [rule](Row const& row) { return row.rule == rule; });
    return found == std::end(rows) ? std::nullopt : std::optional(found->element);
}

int StepOrigin::lineOfMember(std::optional<unsigned> port) const {
    if (!port || !_vlan) {
        return 0;
    }
    auto const& memberships = _switch.ports.at(*port).memberships;
    auto const found = memberships.find(*_vlan);
    return found == memberships.end() ? 0 : found->second.line;
}

int StepOrigin::getLine(std::string_view rule) const {
    std::optional<Element> const element = elementOf(rule);
    if (!element) {
        return 0;
    }
    switch (*element) {
    case Element::sender:
        return _switch.ports.at(_from).line;
    case Element::senderInVlan:
        return lineOfMember(_from);
    case Element::vlan: {
        auto const found = _vlan ? _board.getVlans().find(*_vlan) : _board.getVlans().end();
        return found == _board.getVlans().end() ? 0 : found->second.line;
    }
    case Element::receiverInVlan:
        return lineOfMember(_to);
    case Element::receiver:
        return _to ? _switch.ports.at(*_to).line : 0;
    }
    return 0;
}

} // namespace switchctl::explain
