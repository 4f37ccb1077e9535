#pragma once

/// A run of bits within a register word.
///
/// \tparam Word the unsigned type that holds the register.
template <typename Word> class BitField {
public:
    /// \param position number of the lowest bit, 0 being the least significant of the word.
    /// \param width number of bits, at least 1; the field must fit the word.
    constexpr explicit BitField(unsigned int position, unsigned int width = 1)
        : _position(position), _width(width) {}

    /// The field's bits set, all others clear.
    constexpr Word mask() const {
        return static_cast<Word>(static_cast<Word>(~0ULL >> (allBits - _width)) << _position);
    }

    /// `value` moved to the field's place; bits that do not fit are cut off.
    constexpr Word of(unsigned long long value) const {
        return static_cast<Word>(static_cast<Word>(value << _position) & mask());
    }

    /// The field's value in `word`.
    constexpr Word in(Word word) const { return static_cast<Word>((word & mask()) >> _position); }

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
    unsigned int _position;
    unsigned int _width;
};
