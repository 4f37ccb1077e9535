#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulation/SimulatedBoard.hpp"

namespace benchmarks {

/// A simulated board, and somebody who brings it up and then does single operations on it. The
/// operations of all runs of a document have the same names in the same order, and leave the board in
/// the same state.
///
/// Belongs to the thread that constructs it.
class MeasuredRun {
public:
    struct Operation {
        std::string name;
        std::function<void()> run;
    };

    virtual ~MeasuredRun() = default;

    virtual simulation::SimulatedBoard& getBoard() = 0;

    /// Call it once, and first. Throws std::runtime_error when the switches do not come up.
    virtual void bringUp() = 0;

    /// Of a board that has been brought up. Each is to be run once, in this order.
    virtual std::vector<Operation> getOperations() = 0;

    /// What the operations are about.
    static constexpr unsigned vlan = 40;
    static constexpr char const* group = "239.77.1.2";
    static constexpr unsigned ageSeconds = 600;
};

} // namespace benchmarks
