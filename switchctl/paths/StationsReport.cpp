#include "switchctl/paths/StationsReport.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace switchctl::paths {

using board::StationComparison;
using Json = nlohmann::ordered_json;
using Kind = StationComparison::Kind;

namespace {

std::vector<std::string> addressesOf(std::vector<StationComparison::Place> const& ports) {
    std::vector<std::string> addresses;
    addresses.reserve(ports.size());
    for (auto const& [switchId, port] : ports) {
        addresses.push_back(fmt::format("{}.{}", switchId, port));
    }
    return addresses;
}

char const* explanationOf(Kind kind) {
    switch (kind) {
    case Kind::leak:
        return "reach over cables, but must not,";
    case Kind::missing:
        return "do not reach over cables, but must,";
    case Kind::form:
        return "reach over cables, but must with other tags,";
    default:
        return "reach over cables";
    }
}

} // namespace

StationsReport::StationsReport(board::Cables const& cables, board::Labels const& labels,
                               board::AskedFrames const& frames, std::vector<Line> lines)
    : _cables(cables), _labels(labels), _frames(frames), _lines(std::move(lines)) {}

Severity StationsReport::severityOf(Line const& line) {
    return line.kind == Kind::missing ? Severity::warning : Severity::error;
}

std::size_t StationsReport::count(Severity severity) const {
    auto const found = std::count_if(_lines.begin(), _lines.end(), [severity](Line const& line) {
        return line.kind != Kind::path && severityOf(line) == severity;
    });
    return static_cast<std::size_t>(found) +
           (severity == Severity::warning ? _cables.getMismatches().size() : 0);
}

std::string StationsReport::reachOf(Line const& line) const {
    std::vector<std::string> reached;
    for (auto const& [form, ports] : line.reach) {
        reached.push_back(fmt::format("{} {}", namesOf(_labels, addressesOf(ports)), form.describe()));
    }
    return fmt::format("{}", fmt::join(reached, "; "));
}

void StationsReport::printPaths(std::ostream& out) const {
    if (_cables.isEmpty()) {
        return;
    }
    out << fmt::format("over the cables {}\n", fmt::join(_cables.getTexts(), " "));
    bool isEmpty = true;
    for (Line const& line : _lines) {
        if (line.kind == Kind::path) {
            isEmpty = false;
            out << fmt::format("  {} ({})\n      reach {}\n", namesOf(_labels, addressesOf(line.from)),
                               framesText(_frames, line.frames, line.destinations), reachOf(line));
        }
    }
    if (isEmpty) {
        out << "  nobody reaches anybody\n";
    }
}

void StationsReport::printDifferences(std::ostream& out, std::string const& file) const {
    for (std::string const& mismatch : _cables.getMismatches()) {
        out << fmt::format("{}: {}: {} [mismatch]\n", file, paint(out, Severity::warning), mismatch);
    }
    for (Line const& line : _lines) {
        if (line.kind == Kind::path) {
            continue;
        }
        out << fmt::format("{}: {}: {} ({}) [{}]\n", file, paint(out, severityOf(line)),
                           namesOf(_labels, addressesOf(line.from)),
                           framesText(_frames, line.frames, line.destinations),
                           board::PathLine::name(line.kind));
        if (line.kind == Kind::loop) {
            out << fmt::format("    go round for ever, in at {}\n",
                               fmt::join(addressesOf(line.reach.begin()->second), ", then "));
        } else {
            out << fmt::format("    {} {}\n", explanationOf(line.kind), reachOf(line));
        }
    }
}

Json StationsReport::toJson(Line const& line) const {
    Json to = Json::array();
    for (auto const& [form, ports] : line.reach) {
        to.push_back({{"ports", addressesOf(ports)}, {"form", form.describe()}});
    }
    return {{"kind", board::PathLine::name(line.kind)},
            {"severity", line.kind == Kind::path ? Json() : Json(nameOf(severityOf(line)))},
            {"from", addressesOf(line.from)},
            {"frames", framesToJson(line.frames)},
            {"destinations", destinationsToJson(_frames, line.destinations)},
            {"to", to}};
}

void StationsReport::addTo(Json& json) const {
    json["cables"] = _cables.getTexts();
    json["mismatches"] = _cables.getMismatches();
    json["stations"] = Json::array();
    for (Line const& line : _lines) {
        json["stations"].push_back(toJson(line));
    }
}

} // namespace switchctl::paths
