#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simulation/SimulatedBoard.hpp"
#include "tests/faults/ArmedFault.hpp"
#include "tests/faults/Fault.hpp"
#include "tests/faults/RunResult.hpp"

namespace fault_test {

/// Something that is done to a board again and again, each time with another fault.
class FaultSubject {
public:
    virtual ~FaultSubject() = default;

    /// How it goes without a fault.
    RunResult const& getUndisturbed() const;

    /// Accesses that can be hit by a fault.
    std::uint64_t getAccesses() const;

    /// The fault at one access, counted from 1; nothing when there is no such fault at that access.
    std::optional<Fault> at(FaultKind kind, std::uint64_t number) const;

    /// Does it with the fault.
    RunResult run(Fault const& fault);

protected:
    /// Accesses that it takes a fault, at most, to have all of its effects.
    std::uint64_t patience() const;

    /// Does it once without a fault. To be called by the constructor of the derived class.
    void measure();

    /// Fills in the result, the messages and the effort.
    /// \param begin to be called with the board at hand, before the first access that can be hit.
    /// \param end to be called right after the last one; takes the board's image.
    virtual RunResult perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                              std::function<void(RunResult&)> const& end) = 0;

private:
    RunResult performWith(Fault const* fault);

    std::vector<simulation::BusFaults::Access> _record;
    std::vector<unsigned> _switches;
    RunResult _undisturbed;
};

} // namespace fault_test
