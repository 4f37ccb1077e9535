#pragma once

#include <cstdint>

namespace simulation {

/// Bits `high` to `low` of a word, both included.
constexpr std::uint32_t maskOf(unsigned high, unsigned low) {
    return ((high - low == 31) ? ~std::uint32_t{0} : ((std::uint32_t{1} << (high - low + 1)) - 1)) << low;
}

/// What stands in bits `high` to `low`.
constexpr std::uint32_t bitsOf(std::uint32_t word, unsigned high, unsigned low) {
    return (word & maskOf(high, low)) >> low;
}

/// `value` moved to bits `high` to `low`, cut to their width.
constexpr std::uint32_t placed(std::uint32_t value, unsigned high, unsigned low) {
    return (value << low) & maskOf(high, low);
}

constexpr bool isSet(std::uint32_t word, unsigned bit) {
    return bitsOf(word, bit, bit) != 0;
}

} // namespace simulation
