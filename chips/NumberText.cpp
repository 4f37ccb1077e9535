#include "chips/NumberText.hpp"

#include <fmt/format.h>

#include <charconv>

namespace chips {

std::optional<std::uint32_t> NumberText::parse(std::string const& text) {
    bool const isHexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    char const* const begin = text.data() + (isHexadecimal ? 2 : 0);
    char const* const end = text.data() + text.size();
    std::uint32_t value = 0;
    auto const result = std::from_chars(begin, end, value, isHexadecimal ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return value;
}

std::string NumberText::hexadecimal(std::uint32_t value, unsigned digits) {
    return fmt::format("0x{:0{}x}", value, digits);
}

} // namespace chips
