#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "chips/PortStatus.hpp"

namespace switchctl::status {

/// What there is to say of a port, one fact after the other, for people and for programs.
class StatusFacts {
public:
    struct Fact {
        /// Of a program's member, and of the column.
        char const* name;
        char const* heading;
        /// "-" where the chip has no register that tells it, "unread" where that could not be read.
        std::string text;
        /// Null where the chip does not tell.
        nlohmann::ordered_json value;
        bool isUnread;
    };

    /// \param document what VLANs are called.
    static std::vector<Fact> of(chips::PortStatus const& status, board::BoardReading const& document);
};

} // namespace switchctl::status
