#include "board/dump/EntryRange.hpp"

#include <regex>

namespace board {

// Four digits: more than that no table has.
EntryRange::EntryRange(std::string const& text) : _stem(text) {
    static std::regex const form("(VID )(\\d{1,4})(?: to (\\d{1,4}))?");
    std::smatch parts;
    if (std::regex_match(text, parts, form)) {
        _first = static_cast<unsigned>(std::stoul(parts[2]));
        _last = parts[3].matched ? static_cast<unsigned>(std::stoul(parts[3])) : _first;
        _isNumbered = _first <= _last;
        _stem = _isNumbered ? std::string(parts[1]) : text;
    }
}

bool EntryRange::extend(std::string const& name) {
    if (!_isNumbered || name != _stem + std::to_string(_last + 1)) {
        return false;
    }
    ++_last;
    return true;
}

std::string EntryRange::getText() const {
    if (!_isNumbered) {
        return _stem;
    }
    return _stem + std::to_string(_first) + (_last == _first ? "" : " to " + std::to_string(_last));
}

std::vector<std::string> EntryRange::getNames() const {
    if (!_isNumbered) {
        return {_stem};
    }
    std::vector<std::string> names;
    for (unsigned number = _first; number <= _last; ++number) {
        names.push_back(_stem + std::to_string(number));
    }
    return names;
}

} // namespace board
