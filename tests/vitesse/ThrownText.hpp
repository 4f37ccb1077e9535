#pragma once

#include <string>

/// The text that an operation throws (a char const*).
template <typename Operation> std::string thrownText(Operation operation) {
    try {
        operation();
    } catch (char const* text) {
        return text;
    }
    return "nothing was thrown";
}
