#include "tests/support/RecordingLog.hpp"

#include <utility>

namespace test_support {

namespace {

std::string origin(reference_host::LogMessage const& message) {
    using Operation = reference_host::LogMessage::Operation;
    switch (message.operation) {
    case Operation::critical:
        return "critical";
    case Operation::error:
        return "error";
    case Operation::warning:
        return "warning";
    case Operation::info:
        return "info";
    case Operation::debug:
        return "debug";
    case Operation::level:
        break;
    }
    return std::to_string(message.level);
}

} // namespace

void RecordingLog::write(reference_host::LogMessage const& message) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _lines.push_back(origin(message) + "|" + message.text);
}

Lines RecordingLog::lines() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _lines;
}

Lines RecordingLog::take() {
    std::lock_guard<std::mutex> const lock(_mutex);
    return std::exchange(_lines, {});
}

Lines RecordingLog::take(std::string const& origin) {
    Lines chosen;
    for (auto const& line : take()) {
        if (line.compare(0, origin.size() + 1, origin + "|") == 0) {
            chosen.push_back(line);
        }
    }
    return chosen;
}

} // namespace test_support
