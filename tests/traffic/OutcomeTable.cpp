#include "tests/traffic/OutcomeTable.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>

void OutcomeTable::add(End const& from, Outcome const& outcome) {
    for (Row& row : _rows) {
        Row with = row;
        with.outcomes.emplace_back(from, outcome);
        Outcome const together = unite(row.together, outcome);
        if (outcome.notes == row.together.notes && fits(with, together)) {
            with.senders.insert(from);
            with.together = together;
            row = std::move(with);
            return;
        }
    }
    _rows.push_back({{from}, {{from, outcome}}, outcome});
}

// Each sender reached all of the destinations but its own port; or all of them, where frames come back.
bool OutcomeTable::fits(Row const& row, Outcome const& together) {
    return returns(row, together) ||
           std::all_of(row.outcomes.begin(), row.outcomes.end(),
                       [&together](auto const& each) { return each.second == together.without(each.first); });
}

bool OutcomeTable::returns(Row const& row, Outcome const& together) {
    return std::all_of(row.outcomes.begin(), row.outcomes.end(), [&together](auto const& each) {
        return each.second == together && !(together == together.without(each.first));
    });
}

Outcome OutcomeTable::unite(Outcome const& one, Outcome const& other) {
    Outcome all = one;
    all.destinations.insert(other.destinations.begin(), other.destinations.end());
    return all;
}

std::string OutcomeTable::describe(Words const& words) const {
    std::string text;
    for (Row const& row : _rows) {
        text += fmt::format("  {} {}\n", words.sender, Outcome::describe(row.senders));
        std::map<std::string, Outcome::Ends> plain;
        for (Outcome::Destination const& destination : row.together.destinations) {
            if (destination.ports.size() == 1) {
                plain[destination.how].insert(*destination.ports.begin());
            } else {
                text += fmt::format("      {} one of {} {}\n", words.destination,
                                    Outcome::describe(destination.ports), destination.how);
            }
        }
        for (auto const& [how, ports] : plain) {
            text += fmt::format("      {} {} {}\n", words.destination, Outcome::describe(ports), how);
        }
        if (returns(row, row.together)) {
            text += "      each sender itself included\n";
        }
        for (std::string const& note : row.together.notes) {
            text += fmt::format("      {}\n", note);
        }
    }
    return text;
}
