#include "switchctl/check/CheckReport.hpp"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <nlohmann/json.hpp>

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

} // namespace

void printFindings(std::ostream& out, std::string const& file, DocumentCheck const& check) {
    Colours const colours(out);
    for (Finding const& finding : check.getFindings()) {
        out << finding.file << ':' << finding.line << ": "
            << colours.paint(colourOf(finding.severity), severityName(finding.severity)) << ": "
            << finding.element << " [" << finding.check << "]\n"
            << "    " << finding.effect << '\n'
            << "    Instead: " << finding.advice << '\n';
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
