#include "switchctl/status/StatusFollow.hpp"

#include <utility>

namespace switchctl::status {

namespace {

std::string moreErrors(chips::PortStatus const& first, chips::PortStatus const& now) {
    auto const& start = first.errors.get();
    auto const& end = now.errors.get();
    if (!start || !end) {
        return "";
    }
    return *end < *start ? "cleared" : std::to_string(*end - *start) + " since the start";
}

} // namespace

StatusFollow::StatusFollow(Sample sample, board::BoardReading const& document, WatchPace& pace,
                           std::function<bool()> isHeard)
    : _sample(std::move(sample)), _document(document), _pace(pace), _isHeard(std::move(isHeard)) {}

StatusSample StatusFollow::run(double seconds, unsigned rounds, Teller const& tell) {
    StatusSample const first = _sample();
    for (StatusSample::Row const& row : first.rows) {
        tell(row, {});
    }
    StatusSample last = first;
    for (unsigned round = 1; (rounds == 0 || round <= rounds) && _isHeard() && _pace.wait(seconds); ++round) {
        StatusSample next = _sample();
        for (std::size_t index = 0; index < next.rows.size(); ++index) {
            auto const changes = compare(first.rows[index], last.rows[index], next.rows[index]);
            if (!changes.empty()) {
                tell(next.rows[index], changes);
            }
        }
        last = std::move(next);
    }
    return last;
}

std::vector<StatusFollow::Change> StatusFollow::compare(StatusSample::Row const& first,
                                                        StatusSample::Row const& before,
                                                        StatusSample::Row const& now) const {
    std::vector<StatusFacts::Fact> const old = StatusFacts::of(before.status, _document);
    std::vector<StatusFacts::Fact> const present = StatusFacts::of(now.status, _document);
    std::vector<Change> changes;
    if (now.status.wasLost && before.status.link == now.status.link) {
        changes.push_back({old.front(), present.front(), "lost meanwhile"});
    }
    for (std::size_t index = 0; index < present.size(); ++index) {
        if (old[index].text != present[index].text) {
            changes.push_back({old[index], present[index], ""});
        }
    }
    if (before.status.errors != now.status.errors) {
        changes.back().remark = moreErrors(first.status, now.status);
    }
    return changes;
}

} // namespace switchctl::status
