#include "chips/ChipTables.hpp"

#include <fmt/format.h>

namespace chips {

std::string ChipTables::addressText(std::uint64_t address, unsigned bytes) {
    std::string text;
    while (bytes-- > 0) {
        text += fmt::format("{}{:02x}", text.empty() ? "" : ":", address >> bytes * 8 & 0xFFU);
    }
    return text;
}

} // namespace chips
