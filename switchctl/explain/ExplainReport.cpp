#include "switchctl/explain/ExplainReport.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>

#include "board/Wording.hpp"
#include "board/paths/ForwardingRules.hpp"
#include "board/paths/RuleAdvice.hpp"

namespace switchctl::explain {

using board::ForwardingRules;
using board::FrameKind;
using Json = nlohmann::ordered_json;

namespace {

std::string addressOf(FrameWay::Hop const& hop, unsigned port) {
    return board::portAddress(static_cast<int>(hop.from.switchId), static_cast<int>(port));
}

std::string markOf(ForwardingRules::Rule const& rule) {
    return rule.mark == ForwardingRules::Mark::sure
               ? ""
               : fmt::format(" ({}: {})", ForwardingRules::name(rule.mark), rule.text);
}

/// The rule that says which VLAN it is.
bool isVlanRule(std::string_view rule) {
    return rule == "M7" || rule == "V5";
}

} // namespace

std::string ExplainReport::nameOf(chips::PortAddress const& port) const {
    return _intent.getBoard().getLabels().nameOf(port.getText());
}

std::string ExplainReport::placeOf(int line) const {
    return fmt::format("{}:{}", _file, line);
}

int ExplainReport::lineOf(chips::PortAddress const& port) const {
    return _intent.getBoard().getSwitches().at(port.switchId).ports.at(port.portId).line;
}

std::string ExplainReport::vlanOf(unsigned vid) const {
    auto const vlan = _intent.getBoard().getVlans().find(vid);
    return vlan == _intent.getBoard().getVlans().end() ? board::vlanName(vid)
                                                       : board::vlanName(vid, vlan->second.written);
}

std::string ExplainReport::frameOf(FrameKind::Tags const& tags) const {
    bool const isInVlan = tags.count != 0 && tags.vid != 0;
    return !isInVlan ? tags.describe() : fmt::format("{}, {}", tags.describe(), vlanOf(tags.vid));
}

StepOrigin ExplainReport::originOf(Hop const& hop) const {
    return {_intent.getBoard(), hop.from.switchId, hop.from.portId, hop.to,
            hop.explanation.getDecision().vid};
}

/// The frame goes no further than that switch.
bool ExplainReport::isEnd(Hop const& hop) {
    return !hop.explanation.isDelivered();
}

/// The one that stops the frame there.
std::string_view ExplainReport::ruleOf(Hop const& hop) {
    std::string_view const last = hop.explanation.getWay().rules.back();
    // Asked yet when V7 has refused the frame: its source may be learned all the same.
    return last == "V8" ? "V7" : last;
}

std::string ExplainReport::reasonOf(Hop const& hop) {
    simulation::Decision const& way = hop.explanation.getWay();
    if (way.isRefused()) {
        return "nobody can say: " + way.notModelled;
    }
    return way.toProcessor ? "only the chip's processor gets it" : way.dropReason;
}

std::string ExplainReport::sentOf(Hop const& hop) const {
    std::vector<std::string> sent;
    for (auto const& copy : hop.explanation.getDecision().egress) {
        if (!hop.to || isEnd(hop) || copy.port == *hop.to) {
            sent.push_back(board::RegisterPaths::tagsOf(copy.frame).describe() + " at " +
                           nameOf(hop, copy.port));
        }
    }
    return fmt::format("{}", fmt::join(sent, ", "));
}

std::string ExplainReport::adviceOf(Hop const& hop) const {
    simulation::Decision const& way = hop.explanation.getWay();
    if (hop.to == hop.from.portId) {
        return "";
    }
    std::string const to = hop.to ? addressOf(hop, *hop.to) : "the port that it is to leave by";
    std::string const vlan = way.vid ? vlanOf(*way.vid) : "its VLAN";
    bool const isTagged = hop.frame.tags.count != 0 && hop.frame.tags.vid != 0;
    std::string const here = board::RuleAdvice::get(ruleOf(hop), {hop.from.getText(), to, vlan, isTagged});
    std::string const leftOut =
        leftOutOf(hop.from.switchId, hop.from.portId) + (hop.to ? leftOutOf(hop.from.switchId, *hop.to) : "");
    return here + adviceBefore(hop) + leftOut;
}

/// Of members that the document has and the library does not take.
std::string ExplainReport::leftOutOf(unsigned switchId, unsigned port) const {
    using Member = board::BoardReading::Member;
    std::string text;
    for (auto const& [id, vlan] : _reading.getVlans()) {
        for (Member const& member : vlan.members) {
            bool const isHere =
                member.switchId == static_cast<int>(switchId) && member.portId == static_cast<int>(port);
            if (isHere && member.outcome == board::BoardReading::Outcome::numberTaken) {
                text += fmt::format(
                    "; {} makes {}.{} a member of {}, but the library leaves it out, since port {} of "
                    "another switch is one already",
                    placeOf(member.element->line), switchId, port, vlanOf(id), port);
            }
        }
    }
    return text;
}

/// For a frame that lost its tag at the switch before.
std::string ExplainReport::adviceBefore(Hop const& hop) const {
    if (!hop.to || &hop == &_way.getHops().front() || hop.frame.tags.count != 0) {
        return "";
    }
    Hop const& before = *(&hop - 1);
    int const line = originOf(before).getLine("M14");
    return fmt::format(", or let {} send the frame with its tag{}", addressOf(before, before.to.value()),
                       line == 0 ? "" : fmt::format(" (egress=\"validateTag\", {})", placeOf(line)));
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
    return fmt::format("{} get from {} to {}: {}", value, nameOf(hop.from), nameOf(hop, *hop.to),
                       board::Intent::describe(reason));
}

void ExplainReport::printSteps(std::ostream& out, Hop const& hop) const {
    StepOrigin const origin = originOf(hop);
    for (auto const& step : hop.explanation.getSteps()) {
        ForwardingRules::Rule const& rule = ForwardingRules::get(step.rule);
        auto const& vid = hop.explanation.getWay().vid;
        std::string const vlan = isVlanRule(step.rule) && vid ? ": " + vlanOf(*vid) : "";
        int const line = origin.getLine(step.rule);
        out << fmt::format("  {:<4} {}{}{}{}\n", rule.number, rule.name, vlan,
                           line == 0 ? "" : fmt::format(", {}", placeOf(line)), markOf(rule));
        for (auto const& fact : step.facts) {
            out << fmt::format("         {}/{} = {}\n", hop.from.switchId, fact.place, fact.value);
        }
    }
}

void ExplainReport::printEnd(std::ostream& out, Hop const& hop) const {
    std::string_view const rule = ruleOf(hop);
    std::string const sent = sentOf(hop);
    out << fmt::format("stops here: {} ({}) of switch {}{}, because {}\n", rule,
                       ForwardingRules::get(rule).name, hop.from.switchId,
                       hop.to ? " on the way to " + nameOf(hop, *hop.to) : "", reasonOf(hop));
    if (!sent.empty()) {
        out << fmt::format("it is sent {}\n", sent);
    }
    std::string const advice = adviceOf(hop);
    auto const& remedies = hop.explanation.getRemedies();
    out << fmt::format("what would let it pass: {}\n",
                       advice.empty() ? "nothing that a document could say" : advice);
    out << (remedies.empty() ? "  no three registers that are known here would let it pass\n"
                             : "  in the chip, tried one by one on the model:\n");
    for (auto const& remedy : remedies) {
        out << fmt::format("    {}\n", fmt::join(remedy, " and "));
    }
}

void ExplainReport::print(std::ostream& out, Hop const& hop) const {
    int const line = lineOf(hop.from);
    out << fmt::format("in at {}, {}{}\n", nameOf(hop.from), frameOf(hop.frame.tags),
                       line == 0 ? "; the document does not list the port" : ", " + placeOf(line));
    printSteps(out, hop);
    if (isEnd(hop)) {
        printEnd(out, hop);
    } else {
        out << fmt::format("out {}\n", sentOf(hop));
    }
    if (hop.to) {
        out << fmt::format("by the document it {}\n", wantedOf(hop));
    }
}

void ExplainReport::print(std::ostream& out) const {
    for (Hop const& hop : _way.getHops()) {
        print(out, hop);
    }
    std::vector<std::string> deliveries;
    for (auto const& delivery : _way.getDeliveries()) {
        deliveries.push_back(delivery.tags.describe() + " at " + nameOf(delivery.at));
    }
    out << (deliveries.empty() ? fmt::format("not delivered to {}\n", _question.target)
                               : fmt::format("delivered {}\n", fmt::join(deliveries, ", ")));
}

Json ExplainReport::stepsToJson(Hop const& hop) const {
    StepOrigin const origin = originOf(hop);
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
                         {"text", rule.text},
                         {"facts", facts},
                         {"line", origin.getLine(step.rule)}});
    }
    return steps;
}

Json ExplainReport::toJson(Hop const& hop) const {
    simulation::Decision const& decision = hop.explanation.getDecision();
    Json sent = Json::array();
    for (auto const& copy : decision.egress) {
        sent.push_back({{"port", addressOf(hop, copy.port)},
                        {"form", board::RegisterPaths::tagsOf(copy.frame).describe()}});
    }
    Json json{{"from", hop.from.getText()},
              {"to", hop.to ? Json(addressOf(hop, *hop.to)) : Json()},
              {"frame", hop.frame.tags.describe()},
              {"vid", decision.vid ? Json(*decision.vid) : Json()},
              {"line", lineOf(hop.from)},
              {"steps", stepsToJson(hop)},
              {"sent", sent},
              {"stops", Json()},
              {"remedies", hop.explanation.getRemedies()},
              {"document", wantedOf(hop)}};
    if (isEnd(hop)) {
        std::string const advice = adviceOf(hop);
        json["stops"] = {{"rule", ruleOf(hop)},
                         {"because", reasonOf(hop)},
                         {"advice", advice.empty() ? Json() : Json(advice)}};
    }
    return json;
}

Json ExplainReport::toJson() const {
    Json hops = Json::array();
    for (Hop const& hop : _way.getHops()) {
        hops.push_back(toJson(hop));
    }
    Json deliveries = Json::array();
    for (auto const& delivery : _way.getDeliveries()) {
        deliveries.push_back({{"port", delivery.at.getText()}, {"form", delivery.tags.describe()}});
    }
    return {{"file", _file},
            {"labels", _intent.getBoard().getLabels().getAll()},
            {"target", _question.target},
            {"delivered", !deliveries.empty()},
            {"deliveries", deliveries},
            {"hops", hops}};
}

} // namespace switchctl::explain
