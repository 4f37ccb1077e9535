#include "tests/traffic/Outcome.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <regex>

using simulation::Decision;
using simulation::EthernetFrame;

namespace {

// A trunk is one destination where one member of it sent; where several did, each is one.
std::set<Outcome::Destination> destinationsOf(TrafficBoard::Result const& result,
                                              std::vector<Outcome::Ends> const& trunks) {
    std::map<Outcome::Destination, Outcome::Ends> senders;
    for (TrafficBoard::Arrival const& arrival : result.arrivals) {
        senders[{Outcome::withTrunk(arrival.at, trunks), Outcome::describeTags(arrival.frame)}].insert(
            arrival.at);
    }
    std::set<Outcome::Destination> destinations;
    for (auto const& [destination, ports] : senders) {
        if (ports.size() == 1) {
            destinations.insert(destination);
            continue;
        }
        for (Outcome::End const& port : ports) {
            destinations.insert({{port}, destination.how});
        }
    }
    return destinations;
}

// With the number of the last rule that was asked. What is said of the port itself is said of each of a
// group.
std::string describeDrop(TrafficBoard::Step const& step) {
    Decision const& decision = step.decision;
    std::string const text = fmt::format("{}dropped by {}: {}", decision.isRefused() ? "not modelled, " : "",
                                         decision.rules.back(), decision.dropReason);
    return std::regex_replace(text, std::regex(fmt::format("\\bport {}\\b", step.at.port)), "the port");
}

std::string describeStorm(std::string const& finding) {
    return finding.substr(0, finding.find(" at ")) + finding.substr(finding.find(" by way of "));
}

} // namespace

Outcome Outcome::of(TrafficBoard::Result const& result, End const& from, std::vector<Ends> const& trunks) {
    Outcome outcome;
    outcome.destinations = destinationsOf(result, trunks);
    for (TrafficBoard::Step const& step : result.steps) {
        bool const isFirst = step.at == from;
        std::string const at = isFirst ? "" : "at " + step.at.describe() + " ";
        if (!isFirst) {
            outcome.notes.insert(fmt::format("comes to {} {}", step.at.describe(), describeTags(step.frame)));
        }
        if (step.decision.isDropped()) {
            outcome.notes.insert(at + describeDrop(step));
        }
        if (step.decision.toProcessor) {
            outcome.notes.insert(fmt::format("to the processor of switch {}", step.at.switchId));
        }
    }
    for (std::string const& finding : result.findings) {
        outcome.notes.insert(describeStorm(finding));
    }
    return outcome;
}

Outcome Outcome::without(End const& port) const {
    Outcome rest{{}, notes};
    for (Destination const& destination : destinations) {
        if (destination.ports.count(port) == 0) {
            rest.destinations.insert(destination);
        }
    }
    return rest;
}

Outcome::Ends Outcome::withTrunk(End const& port, std::vector<Ends> const& trunks) {
    auto const found = std::find_if(trunks.begin(), trunks.end(),
                                    [&port](Ends const& trunk) { return trunk.count(port) != 0; });
    return found == trunks.end() ? Ends{port} : *found;
}

std::string Outcome::describeTags(EthernetFrame frame) {
    std::vector<std::string> tags;
    while (auto const tag = frame.getTag()) {
        tags.push_back(fmt::format("{}{}", tag->vid,
                                   tag->priority == 0 ? "" : fmt::format(" priority {}", tag->priority)));
        frame = frame.withTagPopped();
    }
    return tags.empty() ? "untagged" : fmt::format("tagged {}", fmt::join(tags, " before "));
}

std::string Outcome::describe(Ends const& ports) {
    std::vector<std::string> ranges;
    for (auto first = ports.begin(); first != ports.end();) {
        auto last = first;
        auto next = std::next(first);
        while (next != ports.end() && *next == End{last->switchId, last->port + 1}) {
            last = next++;
        }
        ranges.push_back(first == last ? first->describe()
                                       : fmt::format("{}-{}", first->describe(), last->describe()));
        first = next;
    }
    return fmt::format("{}", fmt::join(ranges, ", "));
}
