#include "switchctl/status/StatusFacts.hpp"

#include "board/Wording.hpp"
#include "switchctl/VlanIds.hpp"

namespace switchctl::status {

namespace {

using Json = nlohmann::ordered_json;

/// As text is written, and the value for programs is made.
template <typename Value, typename Write, typename Make>
StatusFacts::Fact factOf(char const* name, char const* heading, chips::PortStatus::Fact<Value> const& fact,
                         Write const& write, Make const& make) {
    auto const& value = fact.get();
    return {name, heading,
            fact.isUnread() ? "unread"
            : value         ? write(*value)
                            : "-",
            value ? Json(make(*value)) : Json(), fact.isUnread()};
}

template <typename Value>
StatusFacts::Fact wordOf(char const* name, char const* heading, chips::PortStatus::Fact<Value> const& fact) {
    auto const same = [](std::string const& text) { return text; };
    return factOf(name, heading, fact, same, same);
}

StatusFacts::Fact eitherOf(char const* name, char const* heading, chips::PortStatus::Fact<bool> const& fact,
                           char const* yes, char const* no) {
    auto const choose = [&](bool value) { return std::string(value ? yes : no); };
    return factOf(name, heading, fact, choose, choose);
}

template <typename Number>
StatusFacts::Fact numberOf(char const* name, char const* heading,
                           chips::PortStatus::Fact<Number> const& fact) {
    return factOf(
        name, heading, fact, [](Number number) { return std::to_string(number); },
        [](Number number) { return number; });
}

} // namespace

std::vector<StatusFacts::Fact> StatusFacts::of(chips::PortStatus const& status,
                                               board::BoardReading const& document) {
    auto const vlanText = [](unsigned vid) {
        return std::to_string(vid) + (vid < 10 ? "" : " (" + board::hexadecimal(vid) + ")");
    };
    auto const vlanJson = [&](unsigned vid) { return vlanIds(vid, document.writtenVlanId(vid)); };
    return {eitherOf("link", "link", status.link, "up", "down"),
            numberOf("megabits", "speed", status.megabits),
            eitherOf("duplex", "dup", status.fullDuplex, "full", "half"),
            wordOf("flowControl", "flow", status.flowControl),
            wordOf("state", "state", status.state),
            factOf("defaultVlan", "VLAN", status.defaultVid, vlanText, vlanJson),
            wordOf("tagging", "tags", status.tagging),
            wordOf("mode8021Q", "802.1Q", status.filtering),
            wordOf("phy", "PHY", status.phy),
            numberOf("errors", "errors", status.errors)};
}

} // namespace switchctl::status
