#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/BusFaults.hpp"
#include "tests/faults/BoardImage.hpp"

namespace fault_test {

/// What came of something that was done to a board, with or without a fault.
struct RunResult {
    /// How it ended as its caller sees it: what was returned, thrown or reported.
    std::string result;
    /// What was said, in alphabetical order, without addresses of the process.
    std::vector<std::string> messages;
    BoardImage image;
    std::uint64_t accesses = 0;
    std::uint64_t nanoseconds = 0;
    /// It would have waited for good, with these accesses.
    bool waitedForGood = false;
    std::vector<simulation::BusFaults::Access> lastAccesses;

    /// What was said here and not there.
    std::vector<std::string> newMessages(RunResult const& other) const;
};

/// Sorts the messages and drops those that are different on every run.
std::vector<std::string> comparable(std::vector<std::string> messages);

} // namespace fault_test
