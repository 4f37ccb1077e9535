#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/faults/FaultSubject.hpp"
#include "tests/faults/Verdict.hpp"

namespace fault_test {

/// What has come of many runs with one kind of fault.
struct FaultCount {
    std::uint64_t runs = 0;
    /// By Outcome.
    std::array<std::uint64_t, numberOfOutcomes> outcomes{};
    std::uint64_t mostAccesses = 0;
    double longestSeconds = 0;
    /// The reasons of those that went wrong; not more than the first ones.
    std::vector<std::string> wrong;

    void add(Verdict const& verdict, RunResult const& run);
    void add(FaultCount const& other);
};

/// What has come of many runs, by the kind of fault.
using FaultTable = std::map<std::string, FaultCount>;

/// Which accesses are hit.
struct Selection {
    std::uint64_t first = 1;
    std::uint64_t stride = 1;
};

/// Does it once for each selected access and each kind of fault that the access can have, and adds what
/// comes of it to the table. The first access that is hit is another one for each kind, so that with a
/// stride not all kinds hit the same ones.
void sweep(FaultSubject& subject, Selection const& selection, FaultTable& table);

/// The reasons of everything that went wrong, a line each.
std::string wrongIn(FaultTable const& table);

} // namespace fault_test
