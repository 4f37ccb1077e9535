#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "board/BoardAccess.hpp"
#include "board/ClockAdoption.hpp"
#include "board/trace/TraceChips.hpp"
#include "chips/RegisterTransport.hpp"
#include "chips/TraceAccess.hpp"
#include "host/Xml.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace switchctl::replay {

/// Fresh models of a trace's chips, reached as the library reaches chips.
///
/// Belongs to the thread that constructs it, which lives by the board's clock; of several, the last made
/// goes first.
class ReplayBoard {
public:
    /// `chips` must outlive the board. A chip that no bus has room for does not answer.
    explicit ReplayBoard(board::TraceChips const& chips);

    /// Makes the access; tells what came of it, and the board's time then. Over the parallel bus where the
    /// trace has the serial line: the chip does not know which it was.
    chips::TraceAccess perform(chips::TraceAccess const& access);

    std::uint64_t getNanoseconds();

    /// Waits, as far as that time is not over.
    void waitUntil(std::uint64_t nanoseconds);

private:
    chips::RegisterTransport& transportTo(unsigned switchId);

    board::TraceChips const& _chips;
    std::unique_ptr<Xml> _document;
    simulation::SimulatedBoard _board;
    board::ClockAdoption _clock;
    board::BoardAccess _reach;
    std::map<unsigned, std::unique_ptr<chips::RegisterTransport>> _transports;
};

} // namespace switchctl::replay
