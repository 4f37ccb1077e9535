#pragma once

#include <optional>
#include <ostream>
#include <string>

namespace chips {

/// A port of the board: switch id and port id, written "0.1".
struct PortAddress {
    unsigned int switchId = 0;
    unsigned int portId = 0;

    /// The address that the text stands for, or nothing.
    static std::optional<PortAddress> fromText(std::string const& text);
    std::string getText() const { return std::to_string(switchId) + "." + std::to_string(portId); }
};

std::ostream& operator<<(std::ostream& out, PortAddress const& address);

} // namespace chips
