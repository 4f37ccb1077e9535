#include "board/audit/LeftOut.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

namespace board {

namespace {

constexpr std::size_t shortestRun = 3;

struct Numbered {
    std::string stem;
    unsigned long number;
};

/// A name without the number at its end; those that have none are numbered by themselves.
Numbered split(std::string const& name) {
    std::size_t const hexadecimal = name.rfind("0x");
    if (hexadecimal != std::string::npos) {
        return {name.substr(0, hexadecimal), std::stoul(name.substr(hexadecimal), nullptr, 0)};
    }
    auto const isDigit = [](unsigned char character) { return std::isdigit(character) != 0; };
    auto const digits =
        static_cast<std::size_t>(std::find_if_not(name.rbegin(), name.rend(), isDigit) - name.rbegin());
    constexpr std::size_t mostDigits = 9;
    if (digits == 0 || digits > mostDigits) {
        return {name + "\n", 0};
    }
    return {name.substr(0, name.size() - digits), std::stoul(name.substr(name.size() - digits))};
}

/// Folds names that are numbered through.
std::vector<std::string> folded(std::map<std::string, unsigned> const& names) {
    std::map<std::string, std::map<unsigned long, std::string>> byStem;
    for (auto const& [name, count] : names) {
        Numbered const numbered = split(name);
        byStem[numbered.stem].emplace(numbered.number, name);
    }
    std::vector<std::string> result;
    for (auto const& [stem, numbers] : byStem) {
        for (auto first = numbers.begin(); first != numbers.end();) {
            auto end = std::next(first);
            std::size_t length = 1;
            for (; end != numbers.end() && end->first == first->first + length; ++end) {
                ++length;
            }
            if (length < shortestRun) {
                result.push_back(first->second);
                ++first;
                continue;
            }
            result.push_back(first->second + " to " + std::prev(end)->second);
            first = end;
        }
    }
    return result;
}

} // namespace

void LeftOut::add(std::string const& reason, std::string const& name) {
    ++_names[reason][name];
}

void LeftOut::add(LeftOut const& other) {
    for (auto const& [reason, names] : other._names) {
        for (auto const& [name, count] : names) {
            _names[reason][name] += count;
        }
    }
}

std::vector<LeftOut::Group> LeftOut::getGroups() const {
    std::vector<Group> groups;
    for (auto const& [reason, names] : _names) {
        unsigned total = 0;
        for (auto const& [name, count] : names) {
            total += count;
        }
        groups.push_back({reason, total, folded(names)});
    }
    return groups;
}

std::string LeftOut::getText() const {
    std::string text;
    for (Group const& group : getGroups()) {
        text += fmt::format("{}{}: {} ({})", text.empty() ? "" : "; ", group.reason, group.count,
                            fmt::join(group.names, ", "));
    }
    return text;
}

} // namespace board
