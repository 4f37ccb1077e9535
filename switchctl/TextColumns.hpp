#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace switchctl {

/// Lines of a table for people: columns aligned, those that are empty left out, words of the last one that do
/// not fit 80 columns in lines of their own.
class TextColumns {
public:
    explicit TextColumns(std::vector<std::string> const& headings) : _lines{headings} {}

    /// As many texts as there are headings.
    void add(std::vector<std::string> const& line) { _lines.push_back(line); }

    void print(std::ostream& out) const;

    /// A text in lines of 80 columns, of which those after the first begin behind so many blanks. A word that
    /// is longer stays whole.
    static std::string wrap(std::string const& text, std::size_t indent = 0);

private:
    void print(std::vector<std::string> const& line, std::vector<std::size_t> const& widths,
               std::ostream& out) const;
    std::vector<std::size_t> getWidths() const;

    std::vector<std::vector<std::string>> _lines;
};

} // namespace switchctl
