#include "reference_host/HostApplication.hpp"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

namespace reference_host {

namespace {

using Operation = LogMessage::Operation;

std::string formatted(char const* format, std::va_list values) {
    std::va_list again;
    va_copy(again, values);
    // The analyser does not follow a list into the function that it is handed to.
    int const length =
        std::vsnprintf(nullptr, 0, format, again); // NOLINT(clang-analyzer-valist.Uninitialized)
    va_end(again);
    if (length < 0) {
        return std::string("(values do not fit the format) ") + format;
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, values);
    text.pop_back();
    return text;
}

} // namespace

struct HostApplication::Implementation {
    Implementation(LogSink& log, PhysicalMemory& physicalMemory) : sink(log), memory(physicalMemory) {}

    void write(Operation operation, unsigned int level, char const* format, std::va_list values) noexcept;

    LogSink& sink;
    PhysicalMemory& memory;
    std::mutex sinkMutex;
    Threads threads;
};

// Whoever logs is in the middle of something: a message that cannot be written is lost, and that is
// all that may happen.
void HostApplication::Implementation::write(Operation operation, unsigned int level, char const* format,
                                            std::va_list values) noexcept {
    try {
        LogMessage message;
        message.operation = operation;
        message.level = level;
        message.text = formatted(format, values);
        std::lock_guard<std::mutex> const lock(sinkMutex);
        sink.write(message);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

HostApplication::HostApplication(LogSink& log, PhysicalMemory& memory)
    : _implementation(std::make_unique<Implementation>(log, memory)) {}

HostApplication::~HostApplication() = default;

void HostApplication::logCritical(char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::critical, 0, format, values);
    va_end(values);
}

void HostApplication::logError(char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::error, 0, format, values);
    va_end(values);
}

void HostApplication::logWarning(char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::warning, 0, format, values);
    va_end(values);
}

void HostApplication::logInfo(char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::info, 0, format, values);
    va_end(values);
}

void HostApplication::logDebug(char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::debug, 0, format, values);
    va_end(values);
}

void HostApplication::log(unsigned int level, char const* format, ...) {
    std::va_list values;
    va_start(values, format);
    _implementation->write(Operation::level, level, format, values);
    va_end(values);
}

Threads& HostApplication::getThreads() {
    return _implementation->threads;
}

PhysicalMemory& HostApplication::getPhysicalMemory() {
    return _implementation->memory;
}

} // namespace reference_host
