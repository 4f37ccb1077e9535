#pragma once

#include <cstdint>
#include <string>

#include "board/PortSelection.hpp"
#include "chips/Counter.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace switchctl::statistics {

/// A counter of a simulated board that is to hold something, as nobody sends it frames:
/// SWITCH.PORT/COUNTER=VALUE or SWITCH.PORT/COUNTER=VALUE+STEP, by the counter's name.
class SeededCounter {
public:
    /// Throws ToolError (usage) when the text is wrong, the port is not of the selection or its chip
    /// has no such counter.
    SeededCounter(std::string const& text, board::PortSelection const& selection);

    /// Sets the model's counter; throws ToolError (usage) when the board has no such chip.
    void set(simulation::SimulatedBoard& board) const;

    /// As if STEP more had been counted: the value goes on by it, and begins at 0 again after the
    /// counter's largest.
    void step();

private:
    std::string _text;
    board::PortSelection::Port _port;
    chips::Counter const* _counter = nullptr;
    std::uint64_t _value = 0;
    std::uint64_t _step = 0;
};

} // namespace switchctl::statistics
