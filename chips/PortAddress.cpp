#include "chips/PortAddress.hpp"

#include <charconv>

namespace chips {

std::optional<PortAddress> PortAddress::fromText(std::string const& text) {
    PortAddress address;
    char const* const end = text.data() + text.size();
    auto const switchPart = std::from_chars(text.data(), end, address.switchId);
    if (switchPart.ec != std::errc() || switchPart.ptr == end || *switchPart.ptr != '.') {
        return std::nullopt;
    }
    auto const portPart = std::from_chars(switchPart.ptr + 1, end, address.portId);
    if (portPart.ec != std::errc() || portPart.ptr != end) {
        return std::nullopt;
    }
    return address;
}

std::ostream& operator<<(std::ostream& out, PortAddress const& address) {
    return out << address.getText();
}

} // namespace chips
