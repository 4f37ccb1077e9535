#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/faults/FaultTable.hpp"

namespace fault_test {

/// What a sweep of one thing has come to.
struct SweepReport {
    /// What was done, for example "trap-access-point.xml" or "operations of the 88E6096".
    std::string subject;
    /// What the faults were counted by, for example "bus accesses".
    std::string unit;
    /// How many of them there are when nothing goes wrong.
    std::uint64_t size = 0;
    /// Of these, every so many were hit.
    std::uint64_t stride = 1;
    FaultTable table;
};

/// One line for each kind of fault of each report, and a last one for all of them.
void print(std::ostream& out, std::vector<SweepReport> const& reports);

/// The same for other programs.
std::string asJson(std::vector<SweepReport> const& reports);

/// What asJson() has written. Throws std::runtime_error when the text is something else.
std::vector<SweepReport> fromJson(std::string const& text);

/// Whether anything went wrong.
bool isAnythingWrong(std::vector<SweepReport> const& reports);

} // namespace fault_test
