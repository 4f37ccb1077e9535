#include "switchctl/paths/PathsReport.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "board/Wording.hpp"
#include "board/paths/ForwardingRules.hpp"
#include "switchctl/paths/PathsWording.hpp"

namespace switchctl::paths {

using board::addressesOf;
using board::IntendedBoard;
using board::numbersOf;
using board::PathLine;
using board::PortSet;
using Json = nlohmann::ordered_json;
using Reason = board::Intent::Reason;

namespace {

unsigned lowestOf(PortSet ports) {
    return numbersOf(ports).front();
}

/// The numbers of rules, which are in their order: "M1 to M7" for "M1 M2 M3 M4 M5 M6 M7".
std::string rangeOf(std::string const& rules) {
    std::size_t const first = rules.find(' ');
    std::size_t const last = rules.rfind(' ');
    return first == std::string::npos ? rules : rules.substr(0, first) + " to" + rules.substr(last);
}

char const* verbOf(PathLine::Kind kind) {
    return kind == PathLine::Kind::missing ? "do not reach" : "reach";
}

} // namespace

PathsReport::PathsReport(std::string file, board::Intent const& intent,
                         board::PathComparison const& comparison, StationsReport const& stations)
    : _file(std::move(file)),
      _intent(intent),
      _frames(comparison.getFrames()),
      _comparison(comparison),
      _stations(stations),
      _paths(comparison.getPaths()),
      _differences(comparison.getDifferences()) {}

Severity PathsReport::severityOf(PathLine const& line) {
    bool const isClosedPort =
        line.key.reason == Reason::senderNotForwarding || line.key.reason == Reason::receiverNotForwarding;
    if (line.key.kind == PathLine::Kind::ambiguous) {
        return Severity::note;
    }
    return line.key.kind == PathLine::Kind::missing || (line.key.kind == PathLine::Kind::leak && isClosedPort)
               ? Severity::warning
               : Severity::error;
}

std::size_t PathsReport::count(Severity severity) const {
    auto const found = std::count_if(_differences.begin(), _differences.end(),
                                     [&](PathLine const& line) { return severityOf(line) == severity; });
    bool const isError = severity == Severity::error;
    return static_cast<std::size_t>(found) + _stations.count(severity) +
           (isError ? _intent.getBoard().getContradictions().size() : 0);
}

std::string PathsReport::portsOf(PathLine const& line, PortSet ports) const {
    return namesOf(_intent.getBoard().getLabels(), addressesOf(line.key.switchId, ports));
}

// What the document says that decides: the line of a port, else that of its switch.
int PathsReport::lineOf(PathLine const& line) const {
    IntendedBoard::Switch const& owner = _intent.getBoard().getSwitches().at(line.key.switchId);
    bool const isReceiver =
        line.key.reason == Reason::receiverNotForwarding || line.key.reason == Reason::receiverNotListed;
    IntendedBoard::Port const& port =
        owner.ports.at(lowestOf(isReceiver ? PathLine::portsOf(line.reach) : line.from));
    return port.isListed ? port.line : owner.line;
}

std::string PathsReport::explanationOf(PathLine const& line) {
    std::string const why = board::Intent::describe(line.key.reason);
    switch (line.key.kind) {
    case PathLine::Kind::leak:
        return "They must not: " + why;
    case PathLine::Kind::ambiguous:
        return "They may: " + why;
    case PathLine::Kind::doubled:
        return "Members of one trunk must not send the same frame";
    default:
        return "They must: " + why;
    }
}

std::string PathsReport::reachOf(PathLine const& line) const {
    std::vector<std::string> reached;
    for (PathLine::Reach const& reach : line.reach) {
        reached.push_back(portsOf(line, reach.to) + " " + reach.form.describe());
    }
    return fmt::format("{}", fmt::join(reached, "; "));
}

void PathsReport::printBlock(std::ostream& out, std::string const& title,
                             std::optional<unsigned> vlan) const {
    out << title << '\n';
    bool isEmpty = true;
    for (PathLine const& line : _paths) {
        if (line.key.vlan == vlan) {
            isEmpty = false;
            out << fmt::format("  {} ({})\n      reach {}\n", portsOf(line, line.from),
                               framesText(_frames, line.frames, line.destinations), reachOf(line));
        }
    }
    if (isEmpty) {
        out << "  nobody reaches anybody\n";
    }
}

void PathsReport::printDifference(std::ostream& out, PathLine const& line) const {
    simulation::Decision const example = _comparison.getExample(line);
    out << fmt::format("{}:{}: {}: {} ({}) [{}]\n", _file, lineOf(line), paint(out, severityOf(line)),
                       portsOf(line, line.from), framesText(_frames, line.frames, line.destinations),
                       PathLine::name(line.key.kind))
        << fmt::format("    {} {}{}\n    {}.\n    By {}{}.\n", verbOf(line.key.kind), reachOf(line),
                       line.key.wanted ? ", which must be " + line.key.wanted->describe() : "",
                       explanationOf(line), rangeOf(line.key.rules),
                       example.isDropped() ? ": " + example.dropReason : "");
}

void PathsReport::print(std::ostream& out) const {
    printBlock(out, "in no VLAN of the document", std::nullopt);
    for (auto const& [id, vlan] : _intent.getBoard().getVlans()) {
        printBlock(out, board::vlanName(id, vlan.written), id);
    }
    _stations.printPaths(out);
    for (auto const& contradiction : _intent.getBoard().getContradictions()) {
        out << fmt::format("{}:{}: error: [contradiction]\n    {}\n", _file, contradiction.line,
                           contradiction.text);
    }
    for (PathLine const& line : _differences) {
        printDifference(out, line);
    }
    _stations.printDifferences(out, _file);
    for (std::string const& line : _comparison.getNotModelled()) {
        out << "not modelled: " << line << '\n';
    }
    std::set<std::string> rules;
    for (PathLine const& line : _differences) {
        rules.insert(line.key.rules);
    }
    printUnsure(out, rules);
    out << fmt::format("{}: {}, {}, {}; {} asked\n", _file, counted(count(Severity::error), "error"),
                       counted(count(Severity::warning), "warning"), counted(count(Severity::note), "note"),
                       counted(_comparison.getQuestions(), "frame"));
}

Json PathsReport::lineToJson(PathLine const& line) const {
    Json to = Json::array();
    for (PathLine::Reach const& reach : line.reach) {
        to.push_back({{"ports", addressesOf(line.key.switchId, reach.to)}, {"form", reach.form.describe()}});
    }
    return {{"switch", line.key.switchId},
            {"from", addressesOf(line.key.switchId, line.from)},
            {"frames", framesToJson(line.frames)},
            {"destinations", destinationsToJson(_frames, line.destinations)},
            {"to", to}};
}

Json PathsReport::differenceToJson(PathLine const& line) const {
    Json json{{"kind", PathLine::name(line.key.kind)},
              {"severity", nameOf(severityOf(line))},
              {"line", lineOf(line)}};
    json.update(lineToJson(line));
    json["wanted"] = line.key.wanted ? Json(line.key.wanted->describe()) : Json();
    json["reason"] = board::Intent::describe(line.key.reason);
    json["rules"] = line.key.rules;
    json["unsure"] = Json::array();
    for (auto const* const rule : board::ForwardingRules::unsureOf(line.key.rules)) {
        json["unsure"].push_back(ruleToJson(*rule));
    }
    return json;
}

Json PathsReport::toJson() const {
    Json paths = Json::array();
    for (PathLine const& line : _paths) {
        Json entry{{"vlan", line.key.vlan ? Json(*line.key.vlan) : Json()}};
        entry.update(lineToJson(line));
        paths.push_back(entry);
    }
    Json differences = Json::array();
    for (PathLine const& line : _differences) {
        differences.push_back(differenceToJson(line));
    }
    Json contradictions = Json::array();
    for (auto const& contradiction : _intent.getBoard().getContradictions()) {
        contradictions.push_back({{"line", contradiction.line}, {"text", contradiction.text}});
    }
    Json json{{"file", _file},
              {"labels", _intent.getBoard().getLabels().getAll()},
              {"errors", count(Severity::error)},
              {"warnings", count(Severity::warning)},
              {"notes", count(Severity::note)},
              {"framesAsked", _comparison.getQuestions()},
              {"unknownVid", _frames.getUnknownVid()},
              {"paths", paths},
              {"differences", differences},
              {"contradictions", contradictions},
              {"notModelled", _comparison.getNotModelled()}};
    _stations.addTo(json);
    return json;
}

} // namespace switchctl::paths
