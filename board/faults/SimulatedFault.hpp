#pragma once

#include <cstdint>
#include <string>

#include "board/faults/FaultKind.hpp"

namespace board {

/// A fault as people write it, "KIND" or "KIND:N".
class SimulatedFault {
public:
    /// Throws ToolError (usage) when there is no such kind, or N is missing, wrong or too much.
    explicit SimulatedFault(std::string const& text);

    /// From now on; accesses count from here. Throws ToolError (usage) when the board has not what it is
    /// about. \param line the board's serial line, or null.
    void strike(simulation::SimulatedBoard& board, simulation::SerialController* line = nullptr) const;

private:
    void parse(std::string const& argument);
    [[noreturn]] void refuse(std::string const& reason) const;

    std::string _text;
    FaultKind const* _kind;
    std::uint64_t _number = 1;
    chips::PortAddress _port;
};

} // namespace board
