#include "board/paths/RuleAdvice.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace board {

namespace {

struct Advice {
    std::string_view rule;
    char const* untagged;
    /// Null: the same.
    char const* tagged;
};

constexpr char const* intoVlan = "make {from} a member of {vlan}";
constexpr char const* addTag = "make {from} a member of a tag-based VLAN with ingress=\"addTagIfUntagged\"";
constexpr char const* openFrom = "list {from} with portStatus=\"forwarding\"";
constexpr char const* openTo = "list {to} with portStatus=\"forwarding\"";
constexpr char const* masks = "make {to} a member of {vlan}, and list it with portStatus=\"forwarding\"";
constexpr char const* startFrom = "let {from} be a smac, an hmac or a switchInterlink with "
                                  "portStatus=\"forwarding\", or have the host start "
                                  "it (ManagedSwitchPort::setPort)";
constexpr char const* startTo =
    "let {to} be a smac, an hmac or a switchInterlink with portStatus=\"forwarding\", or have the host start "
    "it (ManagedSwitchPort::setPort)";
constexpr char const* sourceMask =
    "make {from} and {to} members of {vlan}, and start both: as a smac, an hmac or a switchInterlink with "
    "portStatus=\"forwarding\", or by the host (ManagedSwitchPort::setPort); of a trunk, one member sends";

constexpr Advice advices[] = {
    {"M1", openFrom, nullptr},
    {"M2", "", nullptr},
    {"M3", openFrom, nullptr},
    {"M4", "", nullptr},
    {"M5", addTag, intoVlan},
    {"M6", "", nullptr},
    {"M7", addTag, intoVlan},
    {"M8", "", nullptr},
    {"M9", "", nullptr},
    {"M10", openFrom, nullptr},
    {"M11", openTo, nullptr},
    {"M12", masks, nullptr},
    {"M13", openTo, nullptr},
    {"M14", "", nullptr},
    {"V1", startFrom, nullptr},
    {"V2", "", nullptr},
    {"V3", "", nullptr},
    {"V4", addTag, intoVlan},
    {"V5", "", nullptr},
    {"V6", startFrom, nullptr},
    {"V7", addTag, intoVlan},
    {"V8", addTag, intoVlan},
    {"V9", "where it is for a group, list the group at {to}", nullptr},
    {"V10", sourceMask, nullptr},
    {"V11", startTo, nullptr},
    {"V12", "", nullptr},
};

} // namespace

std::string RuleAdvice::get(std::string_view rule, Way const& way) {
    auto const* const found = std::find_if(std::begin(advices), std::end(advices),
                                           [rule](Advice const& advice) { return advice.rule == rule; });
    if (found == std::end(advices)) {
        throw std::out_of_range("no rule " + std::string(rule));
    }
    char const* const text = way.isTagged && found->tagged != nullptr ? found->tagged : found->untagged;
    return fmt::format(fmt::runtime(text), fmt::arg("from", way.from), fmt::arg("to", way.to),
                       fmt::arg("vlan", way.vlan));
}

} // namespace board
