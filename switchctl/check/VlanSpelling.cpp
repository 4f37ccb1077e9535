#include "switchctl/check/VlanSpelling.hpp"

#include <fmt/format.h>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"

namespace switchctl::check {

namespace {

/// The number that XPath makes of "1e2", 100, in digits; empty when it is no number with an exponent.
std::string withoutExponent(std::string const& text) {
    std::size_t const letter = text.find('e');
    std::string const exponent = letter == std::string::npos ? "" : text.substr(letter + 1);
    if (letter == std::string::npos || !board::isDigits(text.substr(0, letter)) ||
        (!exponent.empty() && !board::isDigits(exponent))) {
        return "";
    }
    return text.substr(0, letter) + std::string(exponent.empty() ? 0 : std::stoul(exponent), '0');
}

} // namespace

std::string vlanSpelling(unsigned int vlanId) {
    if (vlanId == 0 || vlanId > board::BoardReading::highestVlanId) {
        return fmt::format("VLAN {} is none: ids are 1 to {}", vlanId, board::BoardReading::highestVlanId);
    }
    std::string const text = fmt::format("{:x}", vlanId);
    if (board::isDigits(text)) {
        return fmt::format("VLAN {} is written {}", vlanId, text);
    }
    std::string const number = withoutExponent(text);
    if (!number.empty()) {
        return fmt::format("VLAN {} is written {}, as long as no VLAN is written {}", vlanId, text, number);
    }
    return fmt::format("VLAN {} cannot be written: its text would be \"{}\", which loses all members", vlanId,
                       text);
}

} // namespace switchctl::check
