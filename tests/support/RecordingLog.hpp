#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "reference_host/LogSink.hpp"

namespace test_support {

/// Messages as tests write them down: the operation or the level, a bar, and the exact text.
/// For example "error|Unknown port\n" or "2|ready\n".
using Lines = std::vector<std::string>;

/// Keeps every message of an application in order.
class RecordingLog : public reference_host::LogSink {
public:
    void write(reference_host::LogMessage const& message) override;

    /// Everything since construction or the last take().
    Lines lines() const;

    /// As lines(), and forgets them.
    Lines take();

    /// As take(), but only the messages of one operation or level, such as "error" or "2".
    Lines take(std::string const& origin);

private:
    mutable std::mutex _mutex;
    Lines _lines;
};

} // namespace test_support
