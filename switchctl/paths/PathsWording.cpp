#include "switchctl/paths/PathsWording.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "switchctl/terminal/Colours.hpp"

namespace switchctl::paths {

using board::FrameKind;
using Json = nlohmann::ordered_json;
using Rule = board::ForwardingRules::Rule;

char const* nameOf(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "error";
    case Severity::warning:
        return "warning";
    case Severity::note:
        break;
    }
    return "note";
}

std::string paint(std::ostream const& out, Severity severity) {
    constexpr Colours::Colour colours[] = {Colours::Colour::cyan, Colours::Colour::yellow,
                                           Colours::Colour::red};
    return Colours(out).paint(colours[static_cast<std::size_t>(severity)], nameOf(severity));
}

Json framesToJson(std::vector<FrameKind::Tags> const& frames) {
    Json list = Json::array();
    for (FrameKind::Tags const& tags : frames) {
        list.push_back(tags.count == 0 ? Json() : Json(tags.vid));
    }
    return list;
}

Json destinationsToJson(board::AskedFrames const& asked, std::vector<std::size_t> const& destinations) {
    Json list = Json::array();
    for (std::size_t const index : destinations) {
        list.push_back(asked.getDestinations()[index].name);
    }
    return list;
}

std::vector<Rule const*> unsureOf(std::set<std::string> const& rules) {
    std::set<Rule const*> unsure;
    for (std::string const& numbers : rules) {
        auto const some = board::ForwardingRules::unsureOf(numbers);
        unsure.insert(some.begin(), some.end());
    }
    return {unsure.begin(), unsure.end()};
}

void printUnsure(std::ostream& out, std::set<std::string> const& rules) {
    auto const unsure = unsureOf(rules);
    if (!unsure.empty()) {
        out << "rests on what no public document of the chips settles:\n";
    }
    for (auto const* const rule : unsure) {
        out << fmt::format("  {} ({}): {}\n", rule->number, board::ForwardingRules::name(rule->mark),
                           rule->text);
    }
}

Json ruleToJson(Rule const& rule) {
    return {{"rule", rule.number}, {"mark", board::ForwardingRules::name(rule.mark)}, {"text", rule.text}};
}

std::string counted(std::size_t number, char const* thing) {
    return fmt::format("{} {}{}", number, thing, number == 1 ? "" : "s");
}

} // namespace switchctl::paths
