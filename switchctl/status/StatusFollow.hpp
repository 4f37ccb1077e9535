#pragma once

#include <functional>
#include <optional>

#include "switchctl/status/StatusFacts.hpp"
#include "switchctl/status/StatusSample.hpp"
#include "switchctl/terminal/WatchPace.hpp"

namespace switchctl::status {

/// Looks at ports again and again, and tells what has changed.
class StatusFollow {
public:
    struct Change {
        StatusFacts::Fact before;
        StatusFacts::Fact now;
        /// More than that is to be said for people; may be empty.
        std::string remark;
    };

    /// What is new of one port since the look before; nothing at the first look.
    using Teller = std::function<void(StatusSample::Row const& row, std::vector<Change> const& changes)>;

    /// What reads the ports, always the same ones.
    using Sample = std::function<StatusSample()>;

    /// \param document and `pace` must outlive the object.
    /// \param isHeard whether what is told can be written.
    StatusFollow(Sample sample, board::BoardReading const& document, WatchPace& pace,
                 std::function<bool()> isHeard);

    /// Tells of all ports first, then of those that have changed, until the pace says otherwise or nobody
    /// hears it.
    /// \param seconds between two looks.
    /// \param rounds how many looks follow the first; 0 for no limit.
    /// \return the last sample.
    StatusSample run(double seconds, unsigned rounds, Teller const& tell);

private:
    std::vector<Change> compare(StatusSample::Row const& first, StatusSample::Row const& before,
                                StatusSample::Row const& now) const;

    Sample _sample;
    board::BoardReading const& _document;
    WatchPace& _pace;
    std::function<bool()> _isHeard;
};

} // namespace switchctl::status
