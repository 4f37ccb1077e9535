#include "switchctl/explain/ExplainReport.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>

#include "board/Wording.hpp"
#include "board/paths/ForwardingRules.hpp"

namespace switchctl::explain {

using board::ForwardingRules;
using Hop = FrameWay::Hop;
using Json = nlohmann::ordered_json;

namespace {

std::string addressOf(Hop const& hop, unsigned port) {
    return board::portAddress(static_cast<int>(hop.from.switchId), static_cast<int>(port));
}

/// The element of the VLAN's member, else that of the port; 0 when the document has neither.
int lineOfPort(board::IntendedBoard::Port const& port, std::optional<unsigned> vlan) {
    auto const membership = vlan ? port.memberships.find(*vlan) : port.memberships.end();
    return membership != port.memberships.end() ? membership->second.line : port.line;
}

} // namespace

int ExplainReport::lineOf(Hop const& hop, unsigned port) const {
    return lineOfPort(_intent.getBoard().getSwitches().at(hop.from.switchId).ports.at(port), hop.wanted.vlan);
}

std::string ExplainReport::outcomeOf(Hop const& hop) {
    simulation::Decision const& decision = hop.explanation.getDecision();
    std::vector<std::string> sent;
    for (auto const& copy : decision.egress) {
        if (!hop.to || !hop.explanation.isDelivered() || copy.port == *hop.to) {
            sent.push_back(board::RegisterPaths::tagsOf(copy.frame).describe() + " at " +
                           addressOf(hop, copy.port));
        }
    }
    std::string const copies = fmt::format("{}", fmt::join(sent, ", "));
    if (hop.to && !hop.explanation.isDelivered() && !sent.empty()) {
        return fmt::format("stops here: sent {}, but not at {}", copies, addressOf(hop, *hop.to));
    }
    if (sent.empty()) {
        std::string const why = decision.isRefused() ? decision.notModelled : decision.dropReason;
        return fmt::format("stops here: {}, because {}",
                           decision.rules.empty() ? std::string("dropped")
                                                  : std::string(decision.rules.back()),
                           decision.toProcessor ? "only the chip's processor gets it" : why);
    }
    return (hop.to ? "sent " : "delivered ") + copies;
}

std::string ExplainReport::wantedOf(Hop const& hop) const {
    if (!hop.to) {
        return "";
    }
    board::PortSet const self = board::PortSet{1} << *hop.to;
    char const* const value = (hop.wanted.must & self) != 0  ? "must"
                              : (hop.wanted.may & self) != 0 ? "may"
                                                             : "must not";
    auto const reason = _intent.explain(hop.from.switchId, hop.from.portId, hop.frame, hop.wanted, *hop.to);
    return fmt::format("{} get there: {}", value, board::Intent::describe(reason));
}

void ExplainReport::printRemedies(std::ostream& out, Hop const& hop) const {
    if (hop.explanation.isDelivered() || !hop.to) {
        return;
    }
    auto const& remedies = hop.explanation.getRemedies();
    out << (remedies.empty() ? "no three changes that are known here would let it pass\n"
                             : "what would let it pass:\n");
    for (auto const& remedy : remedies) {
        out << fmt::format("  {}\n", fmt::join(remedy, " and "));
    }
}

void ExplainReport::print(std::ostream& out, Hop const& hop) const {
    out << fmt::format("in at {} {}", hop.from.getText(), hop.frame.tags.describe());
    int const line = lineOf(hop, hop.from.portId);
    out << (line == 0 ? ", which the document does not list\n" : fmt::format(", {}:{}\n", _file, line));
    for (auto const& step : hop.explanation.getSteps()) {
        ForwardingRules::Rule const& rule = ForwardingRules::get(step.rule);
        std::string const mark = rule.mark == ForwardingRules::Mark::sure
                                     ? ""
                                     : fmt::format(" ({})", ForwardingRules::name(rule.mark));
        out << fmt::format("  {:<4} {}{}\n", rule.number, rule.name, mark);
        for (auto const& fact : step.facts) {
            out << fmt::format("         {} is {}\n", fact.place, fact.value);
        }
    }
    out << outcomeOf(hop) << '\n';
    printRemedies(out, hop);
    if (hop.to) {
        int const exitLine = lineOf(hop, *hop.to);
        out << fmt::format("by the document it {}{}\n", wantedOf(hop),
                           exitLine == 0 ? "" : fmt::format(" ({}:{})", _file, exitLine));
    }
}

void ExplainReport::print(std::ostream& out) const {
    for (Hop const& hop : _way.getHops()) {
        print(out, hop);
    }
    Hop const& last = _way.getHops().back();
    if (last.to && _way.isDelivered()) {
        auto const* const copy = last.explanation.getDecision().find(*last.to);
        out << fmt::format("delivered {} at {}\n", board::RegisterPaths::tagsOf(copy->frame).describe(),
                           addressOf(last, *last.to));
    }
}

Json ExplainReport::toJson(Hop const& hop) const {
    Json steps = Json::array();
    for (auto const& step : hop.explanation.getSteps()) {
        ForwardingRules::Rule const& rule = ForwardingRules::get(step.rule);
        Json facts = Json::array();
        for (auto const& fact : step.facts) {
            facts.push_back({{"place", fact.place}, {"value", fact.value}});
        }
        steps.push_back({{"rule", rule.number},
                         {"name", rule.name},
                         {"mark", ForwardingRules::name(rule.mark)},
                         {"facts", facts}});
    }
    return {{"from", hop.from.getText()},
            {"to", hop.to ? Json(addressOf(hop, *hop.to)) : Json()},
            {"frame", hop.frame.tags.describe()},
            {"line", lineOf(hop, hop.from.portId)},
            {"steps", steps},
            {"outcome", outcomeOf(hop)},
            {"remedies", hop.explanation.getRemedies()},
            {"document", wantedOf(hop)}};
}

Json ExplainReport::toJson() const {
    Json hops = Json::array();
    for (Hop const& hop : _way.getHops()) {
        hops.push_back(toJson(hop));
    }
    return {{"file", _file}, {"delivered", _way.isDelivered()}, {"hops", hops}};
}

} // namespace switchctl::explain
