#pragma once

#include <string>
#include <vector>

namespace board {

/// Entries of a table one after the other, of which the names end in a number: "VID 6 to 4095".
class EntryRange {
public:
    /// \param text of one entry or of many; any other text is one entry.
    explicit EntryRange(std::string const& text);

    /// \return false when the entry is not the next one; the range is then as before.
    bool extend(std::string const& name);

    std::string getText() const;
    /// Of each entry.
    std::vector<std::string> getNames() const;

private:
    /// What stands before the numbers; all of the text when there are none.
    std::string _stem;
    bool _isNumbered = false;
    unsigned _first = 0;
    unsigned _last = 0;
};

} // namespace board
