#include "board/SessionLog.hpp"

#include <algorithm>

namespace board {

using reference_host::LogMessage;

namespace {

bool isComplaint(LogMessage const& message) {
    return message.operation == LogMessage::Operation::critical ||
           message.operation == LogMessage::Operation::error ||
           message.operation == LogMessage::Operation::warning;
}

} // namespace

SessionLog::SessionLog(reference_host::LogSink* next) : _next(next) {}

void SessionLog::write(LogMessage const& message) {
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
