#include "chips/AccessErrors.hpp"

#include <utility>

namespace chips {

using Operation = reference_host::LogMessage::Operation;

void AccessErrors::write(reference_host::LogMessage const& message) {
    if (message.operation != Operation::error && message.operation != Operation::critical) {
        return;
    }
    std::lock_guard<std::mutex> const lock(_mutex);
    if (!_text.empty()) {
        _text += "; ";
    }
    for (char const character : message.text) {
        _text += character < ' ' ? ' ' : character;
    }
    _text.erase(_text.find_last_not_of(' ') + 1);
}

std::string AccessErrors::take() {
    std::lock_guard<std::mutex> const lock(_mutex);
    return std::exchange(_text, {});
}

} // namespace chips
