#pragma once

#include <istream>
#include <string>
#include <vector>

#include "board/trace/TraceChips.hpp"
#include "chips/RegisterLocation.hpp"
#include "chips/TraceAccess.hpp"

namespace board {

/// A trace that was read.
class TraceReader {
public:
    struct Line {
        /// In the file, from 1.
        unsigned number;
        chips::TraceAccess access;
    };

    /// Both throw ToolError (badDocument) with file, line and reason when it is not a trace.
    /// \param name of the trace for messages.
    TraceReader(std::istream& in, std::string const& name);
    static TraceReader fromFile(std::string const& path);

    TraceChips const& getChips() const { return _chips; }
    std::vector<Line> const& getLines() const { return _lines; }

private:
    void readFirst(std::string const& text);
    void readLine(std::string const& text);
    void readChip(std::vector<std::string> const& words);
    void readAccess(std::vector<std::string> const& words);
    void readPlace(std::vector<std::string> const& words, chips::TraceAccess& access, unsigned& digits);
    void readOutcome(std::vector<std::string> const& words, chips::TraceAccess& access, unsigned digits);
    chips::RegisterLocation find(chips::ChipCatalogue const& chip, std::string const& text) const;
    [[noreturn]] void refuse(std::string const& reason) const;

    std::string _name;
    unsigned _number = 0;
    TraceChips _chips;
    std::vector<Line> _lines;
};

} // namespace board
