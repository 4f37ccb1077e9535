#include "reference_host/StreamLog.hpp"

#include <array>
#include <cstdio>
#include <ctime>
#include <utility>

namespace reference_host {

namespace {

std::string timeStamp(StreamLog::Clock::time_point time) {
    auto const sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    auto const seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    auto const calendarTime = static_cast<std::time_t>(seconds.count());
    std::tm parts{};
    gmtime_r(&calendarTime, &parts);
    std::array<char, 64> text{};
    std::size_t const length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    std::snprintf(text.data() + length, text.size() - length, ".%03dZ ",
                  static_cast<int>((sinceEpoch - seconds).count()));
    return text.data();
}

/// The operations' names, padded to one width.
std::string operationName(LogMessage const& message) {
    switch (message.operation) {
    case LogMessage::Operation::critical:
        return "critical ";
    case LogMessage::Operation::error:
        return "error    ";
    case LogMessage::Operation::warning:
        return "warning  ";
    case LogMessage::Operation::info:
        return "info     ";
    case LogMessage::Operation::debug:
        return "debug    ";
    case LogMessage::Operation::level:
        break;
    }
    return "level " + std::to_string(message.level) + "  ";
}

bool isControl(unsigned char character) {
    return character < 0x20 || character == 0x7F;
}

/// The control characters 0x80 to 0x9F, as UTF-8 spells them.
bool isControl(unsigned char first, unsigned char second) {
    return first == 0xC2 && second >= 0x80 && second <= 0x9F;
}

std::string escaped(unsigned char character) {
    switch (character) {
    case '\n':
        return "\\n";
    case '\t':
        return "\\t";
    case '\r':
        return "\\r";
    default:
        std::array<char, 8> text{};
        std::snprintf(text.data(), text.size(), "\\x%02X", character);
        return text.data();
    }
}

std::string asOneLine(std::string const& text) {
    std::size_t const length = !text.empty() && text.back() == '\n' ? text.size() - 1 : text.size();
    std::string line;
    for (std::size_t i = 0; i < length; ++i) {
        auto const character = static_cast<unsigned char>(text[i]);
        if (isControl(character)) {
            line += escaped(character);
        } else if (i + 1 < length && isControl(character, static_cast<unsigned char>(text[i + 1]))) {
            line += escaped(static_cast<unsigned char>(text[++i]));
        } else {
            line += text[i];
        }
    }
    return line;
}

} // namespace

StreamLog::StreamLog(std::ostream& out) : StreamLog(out, Options()) {}

StreamLog::StreamLog(std::ostream& out, Options options) : _out(out), _options(std::move(options)) {}

void StreamLog::write(LogMessage const& message) {
    if (!isShown(message)) {
        return;
    }
    std::lock_guard<std::mutex> const lock(_mutex);
    _out << (_options.timeStamps ? timeStamp(_options.now()) : "") << operationName(message)
         << asOneLine(message.text) << '\n'
         << std::flush;
}

bool StreamLog::isShown(LogMessage const& message) const {
    return _options.operations.count(message.operation) != 0 &&
           (message.operation != LogMessage::Operation::level || message.level <= _options.highestLevel);
}

} // namespace reference_host
