#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "tests/faults/Fault.hpp"
#include "tests/faults/RunResult.hpp"

namespace fault_test {

/// What became of a fault.
enum class Outcome {
    /// A message, an exception or a result tells of it.
    noticed,
    /// Nobody was told, and the chips hold what they hold without the fault.
    harmless,
    /// Nobody was told, and the chips hold something else: a word was changed on a bus that has no check.
    corrupted,
    /// Nobody was told, and the chips hold something else: the interface gives a driver nothing to look
    /// at, or the driver is not to look.
    unseen,
    /// It is waited out, however long it takes, by design.
    waits,
    /// What must not be.
    wrong,
};

constexpr std::size_t numberOfOutcomes = 6;

/// For tables, for example "noticed".
std::string nameOf(Outcome outcome);

struct Verdict {
    Outcome outcome;
    /// What is wrong; empty otherwise.
    std::string reason;
};

/// Holds what a run with a fault has come to against a run without.
Verdict judge(Fault const& fault, RunResult const& undisturbed, RunResult const& disturbed);

} // namespace fault_test
