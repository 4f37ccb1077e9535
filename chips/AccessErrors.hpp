#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "reference_host/LogSink.hpp"

namespace chips {

/// What the library complains of while it accesses a chip. Some accesses fail without another sign.
/// Any thread may call it.
class AccessErrors : public reference_host::LogSink {
public:
    void write(reference_host::LogMessage const& message) override;

    /// The errors since the last call in one line; empty when there was none.
    std::string take();

private:
    std::mutex _mutex;
    std::string _text;
};

} // namespace chips
