#include "switchctl/SessionLog.hpp"

#include "switchctl/StartUpMonitor.hpp"

namespace switchctl {

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
    if (isComplaint(message)) {
        std::lock_guard<std::mutex> const lock(_mutex);
        _complaints.push_back(message);
    }
    if (_next != nullptr) {
        _next->write(message);
    }
    // Last, since whoever waits goes on from here and may look at the complaints.
    _monitor.inspect(message);
}

std::vector<LogMessage> SessionLog::getComplaints() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _complaints;
}

} // namespace switchctl
