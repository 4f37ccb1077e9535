#pragma once

#include <cstdint>

namespace simulation {

constexpr std::uint32_t bit(unsigned number) {
    return std::uint32_t{1} << number;
}

/// How many bits are set.
constexpr unsigned countBits(std::uint32_t word) {
    unsigned count = 0;
    for (; word != 0; word &= word - 1) {
        ++count;
    }
    return count;
}

/// A field of a register: its name, and its highest and lowest bit.
struct Field {
    char const* name;
    unsigned high;
    unsigned low;

    constexpr Field(char const* nameOfField, unsigned highest, unsigned lowest)
        : name(nameOfField), high(highest), low(lowest) {}
    constexpr Field(char const* nameOfField, unsigned number) : Field(nameOfField, number, number) {}

    /// The same bits, by another register's name for them.
    constexpr Field called(char const* other) const { return {other, high, low}; }

    constexpr std::uint32_t getMask() const { return (~std::uint32_t{0} >> (31 - high + low)) << low; }

    /// What stands there in a word.
    constexpr std::uint32_t get(std::uint32_t word) const { return (word & getMask()) >> low; }
    constexpr bool isSet(std::uint32_t word) const { return get(word) != 0; }

    /// A value moved there, cut to the field's width.
    template <typename Value> constexpr std::uint32_t placed(Value value) const {
        return (static_cast<std::uint32_t>(value) << low) & getMask();
    }
};

} // namespace simulation
