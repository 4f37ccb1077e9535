#include "switchctl/replay/Replay.hpp"

namespace switchctl::replay {

Replay::Replay(board::TraceReader const& trace) : _trace(trace) {}

std::optional<Replay::Divergence> Replay::run() {
    ReplayBoard board(_trace.getChips());
    for (board::TraceReader::Line const& line : _trace.getLines()) {
        // The trace has the end of the access, but whether a chip shows busy depends on its start.
        std::uint64_t const duration = durationOf(line.access);
        if (line.access.nanoseconds > duration) {
            board.waitUntil(line.access.nanoseconds - duration);
        }
        chips::TraceAccess const found = board.perform(line.access);
        if (!isSame(line.access, found)) {
            return Divergence{line, found};
        }
    }
    return std::nullopt;
}

bool Replay::isSame(chips::TraceAccess const& expected, chips::TraceAccess const& found) {
    if (expected.succeeded != found.succeeded) {
        return false;
    }
    return expected.isWrite || !expected.succeeded || expected.value == found.value;
}

/// Of an access to a chip that has nothing else to do.
std::uint64_t Replay::durationOf(chips::TraceAccess const& access) {
    Kind const kind(access.switchId, access.isWrite, access.address);
    auto const known = _durations.find(kind);
    if (known != _durations.end()) {
        return known->second;
    }
    ReplayBoard board(_trace.getChips());
    // The first access also opens the way to the chip.
    chips::TraceAccess opening = access;
    opening.isWrite = false;
    board.perform(opening);
    std::uint64_t const settled = board.getNanoseconds() + 1'000'000'000;
    board.waitUntil(settled);
    std::uint64_t const duration = board.perform(access).nanoseconds - settled;
    _durations.emplace(kind, duration);
    return duration;
}

} // namespace switchctl::replay
