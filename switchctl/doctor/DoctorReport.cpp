#include "switchctl/doctor/DoctorReport.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "switchctl/terminal/Colours.hpp"

namespace switchctl::doctor {

using chips::Examination;
using Family = ExaminedBoard::Family;
using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t width = 80;

/// In lines that fit, all after the first one indented; that one begins with `lead`.
std::string wrapped(std::string const& text, std::size_t indent, std::string const& lead = "") {
    std::string result = lead;
    std::size_t column = lead.size();
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t const end = std::min(text.find(' ', start), text.size());
        std::string const word = text.substr(start, end - start);
        if (start > 0 && column + 1 + word.size() > width) {
            result += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (start > 0) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
        start = end + 1;
    }
    return result;
}

std::string subjectOf(Examination::Finding const& finding, Family const& family) {
    return finding.switchId ? "switch " + std::to_string(*finding.switchId)
                            : "all " + family.kind.getFacts().name;
}

Json jsonOf(Examination::Reading const& reading, Family const& family) {
    Json words = Json::array();
    for (Examination::Reading::Word const& word : reading.words) {
        words.push_back({{"name", word.name}, {"value", word.value}});
    }
    return {{"chip", family.kind.getFacts().name},
            {"place", reading.place},
            {"words", words},
            {"meaning", reading.meaning}};
}

Json jsonOf(Examination::Finding const& finding, Family const& family) {
    return {{"switch", finding.switchId ? Json(*finding.switchId) : Json(nullptr)},
            {"chip", family.kind.getFacts().name},
            {"cause", Examination::nameOf(finding.cause)},
            {"text", finding.text},
            {"measure", finding.measure}};
}

} // namespace

DoctorReport::DoctorReport(board::BoardReading const& document, std::vector<Family> const& families,
                           std::string path, std::string examined)
    : _document(document), _families(families), _path(std::move(path)), _examined(std::move(examined)) {}

DoctorReport::State DoctorReport::stateOf(board::BoardReading::Wanted const& wanted) const {
    for (Family const& family : _families) {
        if (family.kind.getFacts().model != wanted.model) {
            continue;
        }
        for (Examination::Finding const& finding : family.examination.findings) {
            if (finding.switchId == wanted.id) {
                return {false, "does not answer as it should"};
            }
        }
        auto const answer = family.examination.answers.find(wanted.id);
        return answer == family.examination.answers.end() ? State{std::nullopt, "not looked at"}
                                                          : State{true, answer->second};
    }
    return {std::nullopt, "not looked at: no chip \"" + wanted.model + "\" is known"};
}

bool DoctorReport::isWell() const {
    auto const& wanted = _document.getWanted();
    return !wanted.empty() && std::all_of(wanted.begin(), wanted.end(), [this](auto const& entry) {
        return stateOf(entry).answers.value_or(false);
    });
}

bool DoctorReport::isIdentified() const {
    return std::all_of(_families.begin(), _families.end(),
                       [](auto const& family) { return family.examination.isIdentified; });
}

void DoctorReport::print(std::ostream& out) const {
    Colours const colours(out);
    out << "read of " << _examined << ":\n";
    printReadings(out);
    for (board::BoardReading::Wanted const& wanted : _document.getWanted()) {
        State const state = stateOf(wanted);
        std::string const line =
            wrapped(fmt::format("switch {} ({}): {}", wanted.id, wanted.model, state.text), 2);
        out << (state.answers.value_or(false) ? line : colours.paint(Colours::Colour::red, line)) << '\n';
    }
    printFindings(out);
    for (std::string const& text : getUnread()) {
        out << wrapped("not read: " + text, 2) << '\n';
    }
}

void DoctorReport::printReadings(std::ostream& out) const {
    std::size_t widest = 0;
    for (Family const& family : _families) {
        for (Examination::Reading const& reading : family.examination.readings) {
            widest = std::max(widest, reading.place.size());
        }
    }
    for (Family const& family : _families) {
        for (Examination::Reading const& reading : family.examination.readings) {
            std::string words;
            for (Examination::Reading::Word const& word : reading.words) {
                words += word.name + " " + word.value + "  ";
            }
            std::string const line = fmt::format("  {:<{}}  {}", reading.place, widest, words);
            bool const fits = line.size() + reading.meaning.size() <= width;
            out << line.substr(0, line.find_last_not_of(' ') + 1)
                << (fits ? "  " : "\n" + std::string(widest + 4, ' ')) << reading.meaning << '\n';
        }
    }
}

void DoctorReport::printFindings(std::ostream& out) const {
    for (Family const& family : _families) {
        for (Examination::Finding const& finding : family.examination.findings) {
            out << '\n'
                << wrapped(subjectOf(finding, family) + ": " + Examination::nameOf(finding.cause) + ": " +
                               finding.text,
                           2)
                << "\n  measure next:\n";
            for (std::string const& place : finding.measure) {
                out << wrapped(place, 4, "  - ") << '\n';
            }
        }
    }
    bool const hasFindings = std::any_of(_families.begin(), _families.end(), [](Family const& family) {
        return !family.examination.findings.empty();
    });
    out << (hasFindings ? "\n" : "");
}

std::vector<std::string> DoctorReport::getUnread() const {
    std::vector<std::string> unread;
    for (Family const& family : _families) {
        auto const& own = family.examination.unread;
        unread.insert(unread.end(), own.begin(), own.end());
    }
    return unread;
}

nlohmann::ordered_json DoctorReport::toJson() const {
    Json switches = Json::array();
    for (board::BoardReading::Wanted const& wanted : _document.getWanted()) {
        State const state = stateOf(wanted);
        switches.push_back({{"id", wanted.id},
                            {"model", wanted.model},
                            {"answers", state.answers ? Json(*state.answers) : Json(nullptr)},
                            {"text", state.text}});
    }
    Json readings = Json::array();
    Json findings = Json::array();
    for (Family const& family : _families) {
        for (Examination::Reading const& reading : family.examination.readings) {
            readings.push_back(jsonOf(reading, family));
        }
        for (Examination::Finding const& finding : family.examination.findings) {
            findings.push_back(jsonOf(finding, family));
        }
    }
    return {{"file", _path},        {"examined", _examined}, {"switches", switches},
            {"readings", readings}, {"findings", findings},  {"unread", getUnread()}};
}

} // namespace switchctl::doctor
