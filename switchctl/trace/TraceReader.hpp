#pragma once

#include <istream>
#include <string>
#include <vector>

#include "switchctl/registers/RegisterLocation.hpp"
#include "switchctl/trace/TraceAccess.hpp"
#include "switchctl/trace/TraceChips.hpp"

namespace switchctl::trace {

/// A trace that was read.
class TraceReader {
public:
    struct Line {
        /// In the file, from 1.
        unsigned number;
        TraceAccess access;
    };

    /// Both throw CommandError (badDocument) with file, line and reason when it is not a trace.
    /// \param name of the trace for messages.
    TraceReader(std::istream& in, std::string const& name);
    static TraceReader fromFile(std::string const& path);

    TraceChips const& getChips() const;
    std::vector<Line> const& getLines() const;

private:
    void readFirst(std::string const& text);
    void readLine(std::string const& text);
    void readChip(std::vector<std::string> const& words);
    void readAccess(std::vector<std::string> const& words);
    void readPlace(std::vector<std::string> const& words, TraceAccess& access, unsigned& digits);
    void readOutcome(std::vector<std::string> const& words, TraceAccess& access, unsigned digits);
    RegisterLocation find(ChipCatalogue const& chip, std::string const& text) const;
    [[noreturn]] void refuse(std::string const& reason) const;

    std::string _name;
    unsigned _number = 0;
    TraceChips _chips;
    std::vector<Line> _lines;
};

} // namespace switchctl::trace
