#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "benchmarks/AccessList.hpp"
#include "benchmarks/AccessRecorder.hpp"
#include "benchmarks/MeasuredRun.hpp"

namespace benchmarks {

/// What one operation took of the board, the same on every run.
struct OperationCounts {
    /// The name of bringing a board up among the operations.
    static constexpr char const* bringUp = "bring-up";

    std::string name;
    /// 32-bit accesses of the processor, in order.
    std::vector<Access> accesses;
    /// Registers inside of the chips that these reached.
    std::uint64_t chipRegisters = 0;
    std::uint64_t mdioFrames = 0;
    std::uint64_t busNanoseconds = 0;
    /// Bus and pauses, as the board's clock counts them.
    std::uint64_t elapsedNanoseconds = 0;
    /// Looks at the MAC's busy bit, each of which costs the idle loop that is prescribed before it.
    std::uint64_t idleLoops = 0;

    /// Brings the run's board up, does all of its operations, and counts each.
    static std::vector<OperationCounts> of(MeasuredRun& run);

    /// The accesses alone, to compare with a list or to make one of.
    static std::vector<AccessList::Section> accessesOf(std::vector<OperationCounts> const& counts);

    /// Cycles of the buses' clocks: 64 for an MDIO frame, 1 for an access to the parallel bus.
    std::uint64_t busCycles() const;

private:
    static OperationCounts count(MeasuredRun& run, AccessRecorder& recorder,
                                 MeasuredRun::Operation const& operation);
};

} // namespace benchmarks
