#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace board {

/// An address of Ethernet as people write it; as a number, its first byte on the wire is the highest.
struct HardwareAddress {
    /// "02:00:00:00:00:01", or that of an IPv4 group, "239.1.2.3"; nothing when it is neither.
    static std::optional<std::uint64_t> fromText(std::string const& text);

    /// "02:00:00:00:00:01".
    static std::string toText(std::uint64_t address);
};

} // namespace board
