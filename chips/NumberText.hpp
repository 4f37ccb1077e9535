#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace chips {

/// Numbers as people write them.
struct NumberText {
    /// A whole text that is decimal, or hexadecimal after 0x; nothing when it is neither, or too large.
    static std::optional<std::uint32_t> parse(std::string const& text);

    /// For example "0x001a".
    static std::string hexadecimal(std::uint32_t value, unsigned digits);
};

} // namespace chips
