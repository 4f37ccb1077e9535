#pragma once

#include <functional>
#include <string>

#include "tests/faults/ChipOperation.hpp"
#include "tests/faults/FaultSubject.hpp"

namespace fault_test {

/// One operation on a board with one chip.
class OperationFaults : public FaultSubject {
public:
    enum class Family { marvell, vitesse };

    OperationFaults(Family family, ChipOperation const& operation);

protected:
    RunResult perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                      std::function<void(RunResult&)> const& end) override;

private:
    Family _family;
    ChipOperation _operation;
};

} // namespace fault_test
