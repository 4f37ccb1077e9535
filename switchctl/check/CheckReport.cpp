#include "switchctl/check/CheckReport.hpp"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <map>
#include <nlohmann/json.hpp>
#include <tuple>
#include <vector>

#include "board/Wording.hpp"
#include "switchctl/check/CheckTable.hpp"
#include "switchctl/terminal/Colours.hpp"

namespace switchctl::check {

namespace {

using Json = nlohmann::ordered_json;

std::string counted(std::size_t number, std::string const& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

Colours::Colour colourOf(Severity severity) {
    switch (severity) {
    case Severity::error:
        return Colours::Colour::red;
    case Severity::warning:
        return Colours::Colour::yellow;
    case Severity::note:
        break;
    }
    return Colours::Colour::cyan;
}

/// Findings that say the same, in the order of the first of each.
std::vector<std::vector<Finding const*>> groupsOf(std::vector<Finding> const& findings) {
    std::map<std::tuple<std::string, std::string, std::string, std::string>, std::size_t> places;
    std::vector<std::vector<Finding const*>> groups;
    for (Finding const& finding : findings) {
        auto const [entry, isFirst] = places.emplace(
            std::tie(finding.file, finding.check, finding.effect, finding.advice), groups.size());
        if (isFirst) {
            groups.emplace_back();
        }
        groups[entry->second].push_back(&finding);
    }
    return groups;
}

/// Of a member of a VLAN, whose element does not show it.
std::string labelOf(Finding const& finding) {
    bool const isShown = finding.label.empty() || finding.element.find(" label=") != std::string::npos;
    return isShown ? "" : " \"" + finding.label + "\"";
}

/// The lines of all but the first, each once.
std::string furtherLines(std::vector<Finding const*> const& group) {
    std::vector<unsigned int> lines;
    for (Finding const* const finding : group) {
        auto const line = static_cast<unsigned int>(finding->line);
        if (line != static_cast<unsigned int>(group.front()->line) &&
            (lines.empty() || lines.back() != line)) {
            lines.push_back(line);
        }
    }
    return lines.empty() ? "" : (lines.size() == 1 ? "line " : "lines ") + board::listed(lines);
}

} // namespace

void printFindings(std::ostream& out, std::string const& file, DocumentCheck const& check) {
    Colours const colours(out);
    for (std::vector<Finding const*> const& group : groupsOf(check.getFindings())) {
        Finding const& finding = *group.front();
        out << finding.file << ':' << finding.line << ": "
            << colours.paint(colourOf(finding.severity), severityName(finding.severity)) << ": "
            << finding.element << labelOf(finding) << " [" << finding.check << "]\n"
            << "    " << finding.effect << '\n'
            << "    Instead: " << finding.advice << '\n';
        std::string const further = furtherLines(group);
        if (group.size() > 1) {
            out << "    " << group.size() << " times"
                << (further.empty() ? " in this line" : "; also " + further) << ".\n";
        }
    }
    out << file << ": " << counted(check.count(Severity::error), "error") << ", "
        << counted(check.count(Severity::warning), "warning") << ", "
        << counted(check.count(Severity::note), "note") << '\n';
}

Json findingsAsJson(std::string const& file, DocumentCheck const& check) {
    Json json;
    json["file"] = file;
    json["errors"] = check.count(Severity::error);
    json["warnings"] = check.count(Severity::warning);
    json["notes"] = check.count(Severity::note);
    json["findings"] = Json::array();
    for (Finding const& finding : check.getFindings()) {
        json["findings"].push_back({{"check", finding.check},
                                    {"severity", severityName(finding.severity)},
                                    {"file", finding.file},
                                    {"line", finding.line},
                                    {"element", finding.element},
                                    {"effect", finding.effect},
                                    {"advice", finding.advice}});
        if (!finding.label.empty()) {
            json["findings"].back()["label"] = finding.label;
        }
    }
    return json;
}

void printChecks(std::ostream& out) {
    std::size_t width = 0;
    for (Check const& check : allChecks()) {
        width = std::max(width, std::strlen(check.name));
    }
    for (Check const& check : allChecks()) {
        out << std::left << std::setw(static_cast<int>(width)) << check.name << "  " << std::setw(7)
            << severityName(check.severity) << "  " << check.summary << '\n';
    }
}

Json checksAsJson() {
    Json json = Json::array();
    for (Check const& check : allChecks()) {
        json.push_back(
            {{"check", check.name}, {"severity", severityName(check.severity)}, {"summary", check.summary}});
    }
    return {{"checks", json}};
}

} // namespace switchctl::check
