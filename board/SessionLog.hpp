#pragma once

#include <mutex>
#include <vector>

#include "reference_host/LogSink.hpp"

namespace board {

/// The messages of one session: keeps the warnings and errors for the end, and passes all of them on to
/// another sink if there is one.
class SessionLog : public reference_host::LogSink {
public:
    /// \param next may be null; otherwise it must outlive the log.
    explicit SessionLog(reference_host::LogSink* next);

    void write(reference_host::LogMessage const& message) override;

    /// The warnings and errors so far, in order. Any thread.
    std::vector<reference_host::LogMessage> getComplaints() const;

    /// Whether one of them is an error.
    bool hasErrors() const;

private:
    reference_host::LogSink* _next;
    mutable std::mutex _mutex;
    std::vector<reference_host::LogMessage> _complaints;
};

} // namespace board
