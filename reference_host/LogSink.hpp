#pragma once

#include <string>

namespace reference_host {

/// One message of the library or of the host, formatted.
struct LogMessage {
    enum class Operation { critical, error, warning, info, debug, level };

    Operation operation = Operation::level;
    /// The detail level of Operation::level; 0 otherwise.
    unsigned int level = 0;
    /// Exactly what the format and its values gave, line end included where there was one.
    std::string text;
};

/// Receives every message of one application. Called from any thread, one call at a time for each
/// application.
class LogSink {
public:
    virtual ~LogSink() = default;
    virtual void write(LogMessage const& message) = 0;
};

} // namespace reference_host
