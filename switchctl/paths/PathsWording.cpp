#include "switchctl/paths/PathsWording.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "board/Wording.hpp"
#include "switchctl/terminal/Colours.hpp"

namespace switchctl::paths {

using board::FrameKind;
using board::PortSet;
using Json = nlohmann::ordered_json;
using Rule = board::ForwardingRules::Rule;

namespace {

/// VIDs that follow one another are a range.
std::string vidsText(std::vector<FrameKind::Tags> const& frames) {
    constexpr std::size_t shortestRange = 3;
    std::string text;
    for (std::size_t first = 0; first < frames.size();) {
        std::size_t end = first + 1;
        while (end < frames.size() && frames[end].vid == frames[end - 1].vid + 1) {
            ++end;
        }
        end = end - first < shortestRange ? first + 1 : end;
        text += fmt::format(" {}", frames[first].vid);
        text += end == first + 1 ? "" : fmt::format("-{}", frames[end - 1].vid);
        first = end;
    }
    return text;
}

std::string tagsText(std::vector<FrameKind::Tags> frames) {
    bool const isUntagged = !frames.empty() && frames.front().count == 0;
    frames.erase(frames.begin(), frames.begin() + (isUntagged ? 1 : 0));
    std::string const vids = vidsText(frames);
    if (vids.empty()) {
        return "untagged";
    }
    return (isUntagged ? "untagged, tagged" : "tagged") + vids;
}

} // namespace

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

std::string framesText(board::AskedFrames const& asked, std::vector<FrameKind::Tags> const& frames,
                       std::vector<std::size_t> const& destinations) {
    std::string tags = tagsText(frames);
    if (destinations.size() == asked.getDestinations().size()) {
        return tags;
    }
    std::vector<std::string> names;
    names.reserve(destinations.size());
    for (std::size_t const index : destinations) {
        names.push_back(asked.getDestinations()[index].name);
    }
    return tags + ", " + board::listed(names);
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

std::vector<unsigned> numbersOf(PortSet ports) {
    std::vector<unsigned> numbers;
    for (unsigned port = 0; ports != 0; ++port, ports >>= 1U) {
        if ((ports & 1U) != 0) {
            numbers.push_back(port);
        }
    }
    return numbers;
}

std::vector<std::string> addressesOf(unsigned switchId, PortSet ports) {
    std::vector<std::string> addresses;
    for (unsigned const port : numbersOf(ports)) {
        addresses.push_back(board::portAddress(static_cast<int>(switchId), static_cast<int>(port)));
    }
    return addresses;
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
