#include "switchctl/plan/WriteAlignment.hpp"

#include <algorithm>

namespace switchctl::plan {

// Hirschberg's way to the longest common subsequence: halve the first sequence, see where the second
// has to be cut, and do the same for both halves. It needs no table of all pairs.

WriteAlignment::WriteAlignment(Writes const& first, Writes const& second) : _first(first), _second(second) {
    align({0, first.size()}, {0, second.size()});
}

void WriteAlignment::align(Range first, Range second) {
    while (first.getSize() > 0 && second.getSize() > 0 &&
           _first[first.begin].isSameAs(_second[second.begin])) {
        ++first.begin;
        ++second.begin;
    }
    while (first.getSize() > 0 && second.getSize() > 0 &&
           _first[first.end - 1].isSameAs(_second[second.end - 1])) {
        --first.end;
        --second.end;
    }
    if (first.getSize() < 2 || second.getSize() == 0) {
        return alignSingle(first, second);
    }
    std::size_t const middle = first.begin + first.getSize() / 2;
    std::vector<std::size_t> const front = commonFromFront({first.begin, middle}, second);
    std::vector<std::size_t> const back = commonFromBack({middle, first.end}, second);
    std::size_t cut = 0;
    for (std::size_t candidate = 1; candidate <= second.getSize(); ++candidate) {
        if (front[candidate] + back[candidate] > front[cut] + back[cut]) {
            cut = candidate;
        }
    }
    align({first.begin, middle}, {second.begin, second.begin + cut});
    align({middle, first.end}, {second.begin + cut, second.end});
}

/// The first sequence has one write at most, or the second has none.
void WriteAlignment::alignSingle(Range first, Range second) {
    std::size_t match = second.end;
    if (first.getSize() == 1) {
        for (match = second.begin; match < second.end; ++match) {
            if (_second[match].isSameAs(_first[first.begin])) {
                break;
            }
        }
    }
    if (match == second.end) {
        addFirst(first);
        addSecond(second);
    } else {
        addSecond({second.begin, match});
        addSecond({match + 1, second.end});
    }
}

/// Number n of the result: how many writes the first and the first n of the second have in common.
std::vector<std::size_t> WriteAlignment::commonFromFront(Range first, Range second) const {
    std::vector<std::size_t> row(second.getSize() + 1, 0);
    for (std::size_t i = first.begin; i < first.end; ++i) {
        std::size_t diagonal = 0;
        for (std::size_t j = 0; j < second.getSize(); ++j) {
            std::size_t const above = row[j + 1];
            row[j + 1] =
                _first[i].isSameAs(_second[second.begin + j]) ? diagonal + 1 : std::max(above, row[j]);
            diagonal = above;
        }
    }
    return row;
}

/// Number n of the result: how many writes the first and the second without its first n have in common.
std::vector<std::size_t> WriteAlignment::commonFromBack(Range first, Range second) const {
    std::vector<std::size_t> row(second.getSize() + 1, 0);
    for (std::size_t i = first.end; i-- > first.begin;) {
        std::size_t diagonal = 0;
        for (std::size_t j = second.getSize(); j-- > 0;) {
            std::size_t const below = row[j];
            row[j] =
                _first[i].isSameAs(_second[second.begin + j]) ? diagonal + 1 : std::max(below, row[j + 1]);
            diagonal = below;
        }
    }
    return row;
}

void WriteAlignment::addFirst(Range range) {
    for (std::size_t index = range.begin; index < range.end; ++index) {
        _lone.push_back({true, _first[index]});
    }
}

void WriteAlignment::addSecond(Range range) {
    for (std::size_t index = range.begin; index < range.end; ++index) {
        _lone.push_back({false, _second[index]});
    }
}

} // namespace switchctl::plan
