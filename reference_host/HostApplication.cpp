#include "reference_host/HostApplication.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace reference_host {

namespace {

using Operation = LogMessage::Operation;

/// What is kept of a message that there is no memory for.
constexpr std::size_t spareCharacters = 512;

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

std::optional<std::string> formattedIfThereIsMemory(char const* format, std::va_list values) {
    try {
        return formatted(format, values);
    } catch (std::bad_alloc const&) {
        return std::nullopt;
    }
}

} // namespace

struct HostApplication::Implementation {
    Implementation(LogSink& log, PhysicalMemory& physicalMemory) : sink(log), memory(physicalMemory) {
        spare.text.reserve(spareCharacters);
    }

    void write(Operation operation, unsigned int level, char const* format, std::va_list values) noexcept;
    void writeText(Operation operation, unsigned int level, std::string text);
    void writeSpare(Operation operation, unsigned int level, char const* format, std::va_list values);

    LogSink& sink;
    PhysicalMemory& memory;
    std::mutex sinkMutex;
    /// For the messages that there is no memory for.
    LogMessage spare;
    Threads threads;
};

// Whoever logs is in the middle of something: a message that cannot be written is lost, and that is
// all that may happen.
void HostApplication::Implementation::write(Operation operation, unsigned int level, char const* format,
                                            std::va_list values) noexcept {
    std::va_list again;
    va_copy(again, values);
    try {
        if (std::optional<std::string> text = formattedIfThereIsMemory(format, values)) {
            writeText(operation, level, std::move(*text));
        } else {
            writeSpare(operation, level, format, again);
        }
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    va_end(again);
}

void HostApplication::Implementation::writeText(Operation operation, unsigned int level, std::string text) {
    LogMessage message;
    message.operation = operation;
    message.level = level;
    message.text = std::move(text);
    std::lock_guard<std::mutex> const lock(sinkMutex);
    sink.write(message);
}

// That memory ran out is what such a message is about, as likely as not: it has to get through.
void HostApplication::Implementation::writeSpare(Operation operation, unsigned int level, char const* format,
                                                 std::va_list values) {
    std::lock_guard<std::mutex> const lock(sinkMutex);
    spare.operation = operation;
    spare.level = level;
    spare.text.resize(spareCharacters);
    int const length = std::vsnprintf(spare.text.data(), spareCharacters, format, values);
    spare.text.resize(length < 0 ? 0 : std::min(static_cast<std::size_t>(length), spareCharacters - 1));
    sink.write(spare);
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
