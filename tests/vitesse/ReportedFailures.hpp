#pragma once

#include "tests/support/ParallelScript.hpp"

/// While this exists, the parallel register access of the thread returns false for every row of the
/// table that fails. By itself it reports a failed bus access and returns true, so that nothing above
/// it could ever be seen to end at a failure.
class ReportedFailures {
public:
    explicit ReportedFailures(test_support::ParallelScript const& script);
    ~ReportedFailures();
    ReportedFailures(ReportedFailures const&) = delete;
    ReportedFailures& operator=(ReportedFailures const&) = delete;
};
