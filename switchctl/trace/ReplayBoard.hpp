#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "host/Xml.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/ClockAdoption.hpp"
#include "switchctl/audit/AuditedBoard.hpp"
#include "switchctl/registers/RegisterTransport.hpp"
#include "switchctl/trace/TraceAccess.hpp"
#include "switchctl/trace/TraceChips.hpp"

namespace switchctl::trace {

/// Fresh models of a trace's chips, reached as the library reaches chips.
///
/// Belongs to the thread that constructs it, which lives by the board's clock; of several, the last made
/// goes first.
class ReplayBoard {
public:
    /// `chips` must outlive the board. A chip that no bus has room for does not answer.
    explicit ReplayBoard(TraceChips const& chips);

    /// Makes the access; tells what came of it, and the board's time then. Over the parallel bus where the
    /// trace has the serial line: the chip does not know which it was.
    TraceAccess perform(TraceAccess const& access);

    std::uint64_t getNanoseconds();

    /// Waits, as far as that time is not over.
    void waitUntil(std::uint64_t nanoseconds);

private:
    RegisterTransport& transportTo(unsigned switchId);

    TraceChips const& _chips;
    std::unique_ptr<Xml> _document;
    simulation::SimulatedBoard _board;
    ClockAdoption _clock;
    audit::AuditedBoard _reach;
    std::map<unsigned, std::unique_ptr<RegisterTransport>> _transports;
};

} // namespace switchctl::trace
