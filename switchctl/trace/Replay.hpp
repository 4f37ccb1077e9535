#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "switchctl/trace/ReplayBoard.hpp"
#include "switchctl/trace/TraceReader.hpp"

namespace switchctl::trace {

/// Makes the accesses of a trace to fresh models, at the times that the trace has, until the models do
/// something else than the trace says.
class Replay {
public:
    struct Divergence {
        TraceReader::Line line;
        TraceAccess found;
    };

    /// `trace` must outlive the replay.
    explicit Replay(TraceReader const& trace);

    /// Nothing when the models did all that the trace says.
    std::optional<Divergence> run();

private:
    /// Chip, kind of access and unit, on which the time that an access takes depends.
    using Kind = std::tuple<unsigned, bool, std::string>;

    static bool isSame(TraceAccess const& expected, TraceAccess const& found);
    std::uint64_t durationOf(TraceAccess const& access);

    TraceReader const& _trace;
    std::map<Kind, std::uint64_t> _durations;
};

} // namespace switchctl::trace
