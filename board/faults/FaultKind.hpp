#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "chips/PortAddress.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// Something that can go wrong with a simulated board.
struct FaultKind {
    /// What the N of "KIND:N" is.
    enum class Argument { none, access, oneAccess, frame, nanoseconds, switchId, port, characters };

    /// What a fault strikes, and its N.
    struct Target {
        simulation::SimulatedBoard& board;
        /// Null where there is no serial line.
        simulation::SerialController* line;
        std::uint64_t number;
        /// Of Argument::port.
        chips::PortAddress port;
    };

    std::string name;
    Argument argument;
    /// For people: what is seen then.
    std::string effect;
    /// Throws std::out_of_range when the board has no such thing.
    std::function<void(Target const&)> strike;
    bool isOfSerialLine = false;

    /// What N means, and what it is when it is left out; empty where there is none.
    char const* explainArgument() const;
    bool needsArgument() const { return argument == Argument::switchId || argument == Argument::port; }

    /// A new kind joins by a row here.
    static std::vector<FaultKind> const& getAll();

    /// Null when there is none of that name.
    static FaultKind const* find(std::string const& name);
};

} // namespace board
