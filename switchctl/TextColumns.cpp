#include "switchctl/TextColumns.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

namespace switchctl {

namespace {

constexpr std::size_t columns = 80;

} // namespace

std::string TextColumns::wrap(std::string const& text, std::size_t indent) {
    std::istringstream words(text);
    std::string lines;
    std::size_t used = indent;
    for (std::string word; words >> word;) {
        bool const isFirst = lines.empty();
        bool const isFull = !isFirst && used + 1 + word.size() > columns;
        lines += isFull ? "\n" + std::string(indent, ' ') : isFirst ? "" : " ";
        used = (isFull ? indent : used + (isFirst ? 0 : 1)) + word.size();
        lines += word;
    }
    return lines;
}

void TextColumns::print(std::ostream& out) const {
    std::vector<std::size_t> const widths = getWidths();
    for (std::vector<std::string> const& line : _lines) {
        print(line, widths, out);
    }
}

/// Zero of a column that has nothing but its heading.
std::vector<std::size_t> TextColumns::getWidths() const {
    std::vector<std::size_t> widths(_lines.front().size());
    for (std::size_t column = 0; column < widths.size(); ++column) {
        for (std::size_t line = 1; line < _lines.size(); ++line) {
            widths[column] = std::max(widths[column], _lines[line][column].size());
        }
        if (widths[column] != 0) {
            widths[column] = std::max(widths[column], _lines.front()[column].size());
        }
    }
    return widths;
}

void TextColumns::print(std::vector<std::string> const& line, std::vector<std::size_t> const& widths,
                        std::ostream& out) const {
    std::string text;
    for (std::size_t column = 0; column + 1 < line.size(); ++column) {
        if (widths[column] != 0) {
            text += fmt::format("{:{}} ", line[column], widths[column]);
        }
    }
    text += wrap(line.back(), text.size());
    out << text.substr(0, text.find_last_not_of(' ') + 1) << '\n';
}

} // namespace switchctl
