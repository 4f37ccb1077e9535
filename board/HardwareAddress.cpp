#include "board/HardwareAddress.hpp"

#include <fmt/format.h>

#include <cctype>

#include "board/intent/IntendedBoard.hpp"

namespace board {

std::optional<std::uint64_t> HardwareAddress::fromText(std::string const& text) {
    constexpr std::size_t length = 17;
    constexpr unsigned hexadecimal = 16;
    if (text.size() != length) {
        return IntendedBoard::hardwareAddressOf(text);
    }
    std::string digits;
    for (std::size_t index = 0; index < length; ++index) {
        bool const isColon = index % 3 == 2;
        if (isColon ? text[index] != ':' : std::isxdigit(static_cast<unsigned char>(text[index])) == 0) {
            return std::nullopt;
        }
        digits += isColon ? "" : text.substr(index, 1);
    }
    return std::stoull(digits, nullptr, hexadecimal);
}

std::string HardwareAddress::toText(std::uint64_t address) {
    std::string text;
    for (unsigned bits = 48; bits != 0; bits -= 8) {
        text += fmt::format("{}{:02x}", text.empty() ? "" : ":", address >> (bits - 8) & 0xFFU);
    }
    return text;
}

} // namespace board
