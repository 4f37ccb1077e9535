#pragma once

#include <cstdint>
#include <string>

namespace board {

/// Ports of a switch, bit n for port n.
using PortSet = std::uint32_t;

/// All that who-reaches-whom asks of a frame: its tags, and whom it is for.
struct FrameKind {
    /// The C-tags that a frame has on the cable.
    struct Tags {
        /// 0, 1, or 2 for two and more.
        unsigned count = 0;
        /// Of the outer tag; 0 in one that only carries a priority.
        unsigned vid = 0;
        /// Of the second one.
        unsigned inner = 0;

        static Tags none() { return {}; }
        static Tags one(unsigned vid) { return {1, vid, 0}; }

        bool operator==(Tags const& other) const {
            return count == other.count && vid == other.vid && inner == other.inner;
        }
        bool operator!=(Tags const& other) const { return !(*this == other); }
        bool operator<(Tags const& other) const;

        /// "untagged", "tagged 5" or "tagged 5 and 3".
        std::string describe() const;
    };

    enum class Destination : std::uint8_t {
        /// A station.
        unicast,
        broadcast,
        /// An IPv4 group.
        group
    };

    Tags tags;
    Destination destination = Destination::unicast;
    /// Hardware address of the group, or of a station that chips may know; 0 for one that none does.
    std::uint64_t address = 0;
};

} // namespace board
