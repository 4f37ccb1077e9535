#pragma once

/// A run of bits within a register word.
///
/// \tparam Word the unsigned type that holds the register.
template <typename Word> class BitField {
public:
    /// The number of the lowest bit, 0 being the least significant of the word.
    unsigned int const position;

    /// The number of bits, at least 1; the field must fit the word.
    unsigned int const width;

    constexpr explicit BitField(unsigned int lowestBit, unsigned int bits = 1)
        : position(lowestBit), width(bits) {}

    /// The field's bits set, all others clear.
    constexpr Word mask() const {
        return static_cast<Word>(static_cast<Word>(~0ULL >> (allBits - width)) << position);
    }

    /// `value` moved to the field's place; bits that do not fit are cut off.
    constexpr Word of(unsigned long long value) const {
        return static_cast<Word>(static_cast<Word>(value << position) & mask());
    }

    /// The field's value in `word`.
    constexpr Word in(Word word) const { return static_cast<Word>((word & mask()) >> position); }

    /// `word` with the field replaced by `value`.
    constexpr Word replaced(Word word, unsigned long long value) const {
        return static_cast<Word>((word & static_cast<Word>(~mask())) | of(value));
    }

    /// `word` with all bits of the field set.
    constexpr Word set(Word word) const { return static_cast<Word>(word | mask()); }

    /// `word` with all bits of the field clear.
    constexpr Word cleared(Word word) const { return static_cast<Word>(word & static_cast<Word>(~mask())); }

    /// Whether any bit of the field is set in `word`.
    constexpr bool isSet(Word word) const { return (word & mask()) != 0; }

private:
    static constexpr unsigned int allBits = 64;
};
