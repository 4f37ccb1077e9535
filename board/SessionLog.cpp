#include "board/SessionLog.hpp"

#include <algorithm>

#include "board/StartUpMonitor.hpp"

namespace board {

using reference_host::LogMessage;

namespace {

bool isComplaint(LogMessage const& message) {
    return message.operation == LogMessage::Operation::critical ||
           message.operation == LogMessage::Operation::error ||
           message.operation == LogMessage::Operation::warning;
}

} // namespace

SessionLog::SessionLog(StartUpMonitor& monitor, reference_host::LogSink* next)
    : _monitor(monitor), _next(next) {}

void SessionLog::write(LogMessage const& message) {
    // The monitor comes last, since whoever waits goes on from here and may look at the complaints; but
    // it comes, whatever becomes of the message.
    try {
        keep(message);
    } catch (...) {
        _monitor.inspect(message);
        throw;
    }
    _monitor.inspect(message);
}

void SessionLog::keep(LogMessage const& message) {
    if (isComplaint(message)) {
        std::lock_guard<std::mutex> const lock(_mutex);
        _complaints.push_back(message);
    }
    if (_next != nullptr) {
        _next->write(message);
    }
}

bool SessionLog::hasErrors() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return std::any_of(_complaints.begin(), _complaints.end(), [](LogMessage const& message) {
        return message.operation != LogMessage::Operation::warning;
    });
}

std::vector<LogMessage> SessionLog::getComplaints() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _complaints;
}

} // namespace board
