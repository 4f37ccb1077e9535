#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <tuple>

#include "board/trace/TraceReader.hpp"
#include "switchctl/replay/ReplayBoard.hpp"

namespace switchctl::replay {

/// Makes the accesses of a trace to fresh models, at the times that the trace has, until the models do
/// something else than the trace says.
class Replay {
public:
    struct Divergence {
        board::TraceReader::Line line;
        chips::TraceAccess found;
    };

    /// `trace` must outlive the replay.
    explicit Replay(board::TraceReader const& trace);

    /// Nothing when the models did all that the trace says.
    std::optional<Divergence> run();

private:
    /// Chip, kind of access and unit, on which the time that an access takes depends.
    using Kind = std::tuple<unsigned, bool, std::optional<simulation::UnitPlace>>;

    static bool isSame(chips::TraceAccess const& expected, chips::TraceAccess const& found);
    std::uint64_t durationOf(chips::TraceAccess const& access);

    board::TraceReader const& _trace;
    std::map<Kind, std::uint64_t> _durations;
};

} // namespace switchctl::replay
