#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace simulation {

/// A number of a configuration document: what stands at the start of a text, behind blanks and a sign,
/// whatever follows it.
class DocumentNumber {
public:
    /// Nothing when the text does not begin with a decimal number.
    static std::optional<DocumentNumber> decimal(std::string const& text);

    /// As decimal(), of hexadecimal digits with or without "0x".
    static std::optional<DocumentNumber> hexadecimal(std::string const& text);

    /// In 32 bits with a sign: the nearest number that fits.
    int toInt() const;

    /// In 32 bits without a sign: a negative number counts back from 2^32; one of more than 32 bits, of
    /// either sign, is the largest.
    unsigned int toUnsigned() const;

    /// Whether toInt() is the number itself.
    bool fitsInt() const;

    /// Whether the digits are of at most 32 bits.
    bool fitsUnsigned() const;

private:
    static std::optional<DocumentNumber> read(std::string const& text, int base);

    bool _isNegative = false;
    /// At most the largest one.
    std::uint64_t _magnitude = 0;
};

} // namespace simulation
