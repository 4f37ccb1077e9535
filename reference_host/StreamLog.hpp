#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <ostream>
#include <set>

#include "reference_host/LogSink.hpp"

namespace reference_host {

/// Writes messages to a stream, one line each, as "TIME OPERATION TEXT".
///
/// A message always takes exactly one line: a missing line end is added, and control characters
/// within the text are shown as \n, \t, \r or \xNN, so that received text can neither pretend to be
/// a message of its own nor reach the terminal. May be shared by several applications.
class StreamLog : public LogSink {
public:
    using Clock = std::chrono::system_clock;

    struct Options {
        /// The operations whose messages are shown.
        std::set<LogMessage::Operation> operations = {
            LogMessage::Operation::critical, LogMessage::Operation::error, LogMessage::Operation::warning,
            LogMessage::Operation::info,     LogMessage::Operation::debug, LogMessage::Operation::level};
        /// Of the messages with a detail level, those up to this one are shown.
        unsigned int highestLevel = 4;
        /// Whether lines begin with the time, UTC with milliseconds.
        bool timeStamps = true;
        /// Where the time comes from.
        std::function<Clock::time_point()> now = Clock::now;
    };

    /// Shows everything.
    explicit StreamLog(std::ostream& out);

    /// The stream must outlive the log.
    StreamLog(std::ostream& out, Options options);

    void write(LogMessage const& message) override;

private:
    bool isShown(LogMessage const& message) const;

    std::mutex _mutex;
    std::ostream& _out;
    Options _options;
};

} // namespace reference_host
