#include "simulation/DocumentNumber.hpp"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

namespace simulation {

namespace {

constexpr int decimalBase = 10;
constexpr int hexadecimalBase = 16;

void skip(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

bool take(std::string_view& text, std::string_view start) {
    bool const found = text.substr(0, start.size()) == start;
    text.remove_prefix(found ? start.size() : 0);
    return found;
}

} // namespace

std::optional<DocumentNumber> DocumentNumber::decimal(std::string const& text) {
    return read(text, decimalBase);
}

std::optional<DocumentNumber> DocumentNumber::hexadecimal(std::string const& text) {
    return read(text, hexadecimalBase);
}

std::optional<DocumentNumber> DocumentNumber::read(std::string const& text, int base) {
    std::string_view rest = text;
    skip(rest, " \t\n\v\f\r");
    DocumentNumber number;
    number._isNegative = take(rest, "-");
    if (!number._isNegative) {
        take(rest, "+");
    }
    // A prefix without digits is the 0 that it begins with.
    bool const prefixed = base == hexadecimalBase && (take(rest, "0x") || take(rest, "0X"));
    std::errc const error =
        std::from_chars(rest.data(), rest.data() + rest.size(), number._magnitude, base).ec;
    if (error == std::errc::result_out_of_range) {
        number._magnitude = std::numeric_limits<std::uint64_t>::max();
    }
    bool const isThere = prefixed || error != std::errc::invalid_argument;
    return isThere ? std::optional<DocumentNumber>(number) : std::nullopt;
}

int DocumentNumber::toInt() const {
    constexpr std::uint64_t largest = std::numeric_limits<int>::max();
    std::uint64_t const size = std::min(_magnitude, _isNegative ? largest + 1 : largest);
    return static_cast<int>(_isNegative ? -static_cast<std::int64_t>(size) : static_cast<std::int64_t>(size));
}

unsigned int DocumentNumber::toUnsigned() const {
    auto const size = static_cast<unsigned int>(_magnitude);
    return !fitsUnsigned() ? std::numeric_limits<unsigned int>::max() : _isNegative ? 0U - size : size;
}

bool DocumentNumber::fitsInt() const {
    constexpr std::uint64_t largest = std::numeric_limits<int>::max();
    return _magnitude <= (_isNegative ? largest + 1 : largest);
}

bool DocumentNumber::fitsUnsigned() const {
    return _magnitude <= std::numeric_limits<unsigned int>::max();
}

} // namespace simulation
