#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace chips {

/// A table of a chip, as it was read, in words that all families share.
struct ChipTable {
    enum class Kind { addresses, vlans, spanningTree, groups, routes, trunks };

    struct Member {
        unsigned port;
        /// What the row says of it, for example "tagged"; may be empty.
        std::string what;
    };

    struct Row {
        /// What the chip calls it, for example "SID 5"; empty when VLANs and address say it.
        std::string name;
        std::vector<unsigned> vlans;
        /// First byte on the wire highest.
        std::optional<std::uint64_t> address;
        /// No frame changes it and no age ends it; of addresses and groups.
        std::optional<bool> isStatic;
        /// Of routes: where the frames come from that may go to the ports.
        std::optional<unsigned> from;
        std::vector<Member> members;
        /// What else there is to say, by name.
        std::vector<std::pair<std::string, std::string>> facts;
    };

    /// What the chip calls it.
    std::string unit;
    std::vector<Row> rows;
    /// What is not in the rows and why, in sentences.
    std::vector<std::string> notes;
};

} // namespace chips
