#include "switchctl/paths/StartingReport.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

#include "board/AccessReplay.hpp"
#include "board/Wording.hpp"
#include "switchctl/paths/PathsReport.hpp"

namespace switchctl::paths {

using board::addressesOf;
using board::numbersOf;
using board::PathLine;
using simulation::AccessLog;
using Json = nlohmann::ordered_json;

namespace {

/// A switch, a port that sends and one that gets it.
using Pairs = std::set<std::tuple<unsigned, unsigned, unsigned>>;

void addPairs(Pairs& pairs, PathLine const& line) {
    for (unsigned const sender : numbersOf(line.from)) {
        for (unsigned const receiver : numbersOf(line.receiversOf(sender, PathLine::portsOf(line.reach)))) {
            pairs.emplace(line.key.switchId, sender, receiver);
        }
    }
}

std::size_t pairsIn(std::vector<PathLine> const& lines) {
    Pairs pairs;
    for (PathLine const& line : lines) {
        addPairs(pairs, line);
    }
    return pairs.size();
}

} // namespace

StartingReport::StartingReport(std::string file, std::string oldFile, board::WatchedStartUp const& startUp)
    : _file(std::move(file)),
      _oldFile(std::move(oldFile)),
      _startUp(startUp),
      _intervals(startUp.getPaths().getIntervals()),
      _left(startUp.getPaths().getLeft()) {}

std::size_t StartingReport::count(Severity severity) const {
    auto const left = std::count_if(_left.begin(), _left.end(), [severity](PathLine const& line) {
        return PathsReport::severityOf(line) == severity;
    });
    return static_cast<std::size_t>(left) + (severity == Severity::warning ? _intervals.size() : 0);
}

std::uint64_t StartingReport::timeOf(Write write) const {
    return write == 0 ? 0 : _startUp.getWrites()[write - 1].nanoseconds;
}

std::uint64_t StartingReport::lengthOf(Interval const& interval) const {
    return timeOf(interval.closed) - timeOf(interval.opened);
}

std::uint64_t StartingReport::getLongest() const {
    std::uint64_t longest = 0;
    for (Interval const& interval : _intervals) {
        longest = std::max(longest, lengthOf(interval));
    }
    return longest;
}

std::size_t StartingReport::countPairs() const {
    Pairs pairs;
    for (Interval const& interval : _intervals) {
        for (PathLine const& line : interval.lines) {
            addPairs(pairs, line);
        }
    }
    return pairs.size();
}

std::string StartingReport::begin() const {
    return _oldFile.empty() ? "the reset" : "a bring-up of " + _oldFile;
}

// "0/port 3/PortControl2:802.1QMode = 0x3", with all fields that get another value, or the whole register.
std::string StartingReport::writeText(Write write) const {
    if (write == 0) {
        return begin();
    }
    AccessLog::Entry const& entry = _startUp.getWrites()[write - 1];
    std::vector<std::string> values;
    for (AccessLog::FieldChange const& change : entry.changes) {
        values.push_back(change.field + " = " + board::fieldValue(change.field, change.after));
    }
    return fmt::format("write {} at {} ns, {}/{}/{}{}", write, entry.nanoseconds,
                       board::AccessReplay::switchOf(entry), entry.unit, entry.registerName,
                       values.empty() ? fmt::format(" = {:#x}", entry.value)
                                      : fmt::format(":{}", fmt::join(values, ", ")));
}

void StartingReport::printInterval(std::ostream& out, Interval const& interval) const {
    out << fmt::format("{}: {}: open for {} ns\n    since {}\n    until {}\n", _file,
                       paint(out, Severity::warning), lengthOf(interval), writeText(interval.opened),
                       writeText(interval.closed));
    for (PathLine const& line : interval.lines) {
        out << fmt::format(
            "  {} ({})\n      reach {}\n",
            namesOf(_startUp.getLabels(), addressesOf(line.key.switchId, line.from)),
            framesText(_startUp.getFrames(), line.frames, line.destinations),
            namesOf(_startUp.getLabels(), addressesOf(line.key.switchId, PathLine::portsOf(line.reach))));
    }
}

void StartingReport::print(std::ostream& out) const {
    for (Interval const& interval : _intervals) {
        printInterval(out, interval);
    }
    board::OpenPaths::Silence const& silence = _startUp.getPaths().getSilence();
    if (silence.writes != 0) {
        out << fmt::format("paths that were and stay wanted are interrupted after {}, for the first time "
                           "since {},\n    for the last time after {}\n",
                           counted(silence.writes, "write"), writeText(silence.first),
                           writeText(silence.last));
    }
    for (std::string const& line : _startUp.getPaths().getNotModelled()) {
        out << "not modelled: " << line << '\n';
    }
    printUnsure(out, _startUp.getPaths().getRules());
    if (!_left.empty()) {
        out << fmt::format("{} of ports open in the end: \"switchctl paths {}{}\" shows them\n",
                           counted(pairsIn(_left), "pair"), _file, _oldFile.empty() ? "" : " --live");
    }
    out << fmt::format("{}: after {}, {} in {} ns: {} of ports open in {}, for {} ns at most; {} asked\n",
                       _file, begin(), counted(_startUp.getWrites().size(), "write"),
                       timeOf(_startUp.getWrites().size()), counted(countPairs(), "pair"),
                       counted(_intervals.size(), "interval"), getLongest(),
                       counted(_startUp.getPaths().getQuestions(), "frame"));
}

Json StartingReport::writeToJson(Write write) const {
    if (write == 0) {
        return nullptr;
    }
    AccessLog::Entry const& entry = _startUp.getWrites()[write - 1];
    Json fields = Json::array();
    for (AccessLog::FieldChange const& change : entry.changes) {
        fields.push_back({{"field", change.field}, {"before", change.before}, {"after", change.after}});
    }
    return {{"write", write},     {"access", entry.sequence},       {"nanoseconds", entry.nanoseconds},
            {"unit", entry.unit}, {"register", entry.registerName}, {"value", entry.value},
            {"changes", fields}};
}

Json StartingReport::lineToJson(PathLine const& line) const {
    unsigned const id = line.key.switchId;
    return {{"from", addressesOf(id, line.from)},
            {"frames", framesToJson(line.frames)},
            {"destinations", destinationsToJson(_startUp.getFrames(), line.destinations)},
            {"to", addressesOf(id, PathLine::portsOf(line.reach))}};
}

Json StartingReport::intervalToJson(Interval const& interval) const {
    Json paths = Json::array();
    for (PathLine const& line : interval.lines) {
        paths.push_back(lineToJson(line));
    }
    return {{"switch", interval.switchId},
            {"nanoseconds", lengthOf(interval)},
            {"opened", writeToJson(interval.opened)},
            {"closed", writeToJson(interval.closed)},
            {"paths", paths}};
}

Json StartingReport::toJson() const {
    Json intervals = Json::array();
    for (Interval const& interval : _intervals) {
        intervals.push_back(intervalToJson(interval));
    }
    board::OpenPaths::Silence const& silence = _startUp.getPaths().getSilence();
    Json unsure = Json::array();
    for (auto const* const rule : unsureOf(_startUp.getPaths().getRules())) {
        unsure.push_back(ruleToJson(*rule));
    }
    return {{"file", _file},
            {"labels", _startUp.getLabels().getAll()},
            {"warm", _oldFile.empty() ? Json() : Json(_oldFile)},
            {"errors", count(Severity::error)},
            {"warnings", count(Severity::warning)},
            {"writes", _startUp.getWrites().size()},
            {"nanoseconds", timeOf(_startUp.getWrites().size())},
            {"framesAsked", _startUp.getPaths().getQuestions()},
            {"pairs", countPairs()},
            {"longest", getLongest()},
            {"intervals", intervals},
            {"interrupted",
             {{"writes", silence.writes},
              {"first", writeToJson(silence.first)},
              {"last", writeToJson(silence.last)}}},
            {"pairsLeft", pairsIn(_left)},
            {"notModelled", _startUp.getPaths().getNotModelled()},
            {"unsure", unsure}};
}

} // namespace switchctl::paths
