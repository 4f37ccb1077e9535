#include "model/XmlText.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

namespace {

xmlChar const* asXml(char const* text) {
    return reinterpret_cast<xmlChar const*>(text); // NOLINT: libxml2's character is unsigned
}

char const* asPlain(xmlChar const* text) {
    return reinterpret_cast<char const*>(text); // NOLINT: libxml2's character is unsigned
}

constexpr int decimalBase = 10;
constexpr int hexadecimalBase = 16;

struct Number {
    bool isThere;
    bool isNegative;
    std::uint64_t magnitude; ///< at most the largest one
};

bool isBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool hasHexadecimalPrefix(char const* text) {
    return text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

/// The number at the start of a text, behind blanks and a sign; what follows it does not count. Not by
/// std::sscanf or std::atoi: beyond the largest number, each C library has a result of its own.
Number numberIn(char const* text, int base) {
    while (isBlank(*text)) {
        ++text;
    }
    bool const isNegative = *text == '-';
    if (isNegative || *text == '+') {
        ++text;
    }
    // A prefix that no digit follows is the digit 0 and something else.
    bool const hasPrefix = base == hexadecimalBase && hasHexadecimalPrefix(text);
    if (hasPrefix) {
        text += 2;
    }
    std::uint64_t magnitude = 0;
    std::errc const error = std::from_chars(text, text + std::strlen(text), magnitude, base).ec;
    if (error == std::errc::result_out_of_range) {
        magnitude = std::numeric_limits<std::uint64_t>::max();
    }
    return {hasPrefix || error != std::errc::invalid_argument, isNegative, magnitude};
}

} // namespace

XmlText XmlText::attribute(xmlNode const* node, char const* name) {
    return XmlText(xmlGetProp(node, asXml(name)));
}

XmlText XmlText::content(xmlNode const* node) {
    return XmlText(xmlNodeGetContent(node));
}

bool XmlText::equals(char const* other) const {
    return isPresent() && std::strcmp(text(), other) == 0;
}

char const* XmlText::text() const {
    return isPresent() ? asPlain(_text.get()) : "";
}

char const* XmlText::printable() const {
    return isPresent() ? text() : "(null)";
}

bool XmlText::parseDecimal(int& value) const {
    Number const number = numberIn(text(), decimalBase);
    if (number.isThere) {
        using Limits = std::numeric_limits<int>;
        std::int64_t const limit = number.isNegative ? -std::int64_t{Limits::min()} : Limits::max();
        auto const size =
            static_cast<std::int64_t>(std::min(number.magnitude, static_cast<std::uint64_t>(limit)));
        value = static_cast<int>(number.isNegative ? -size : size);
    }
    return number.isThere;
}

bool XmlText::parseHexadecimal(unsigned int& value) const {
    Number const number = numberIn(text(), hexadecimalBase);
    if (number.isThere) {
        constexpr unsigned int largest = std::numeric_limits<unsigned int>::max();
        bool const fits = number.magnitude <= largest;
        auto const size = static_cast<unsigned int>(number.magnitude);
        value = !fits ? largest : number.isNegative ? 0U - size : size;
    }
    return number.isThere;
}

int XmlText::toInteger(int ifAbsent) const {
    int value = isPresent() ? 0 : ifAbsent;
    parseDecimal(value);
    return value;
}
