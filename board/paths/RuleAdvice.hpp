#pragma once

#include <string>
#include <string_view>

namespace board {

/// What a document would have to say for a frame to get past the rule of forwarding that stops it.
class RuleAdvice {
public:
    /// Texts for people.
    struct Way {
        /// "0.1".
        std::string from;
        /// "0.10", or "the port that it is to leave by".
        std::string to;
        /// "VLAN 5 (0x5)".
        std::string vlan;
        bool isTagged = false;
    };

    /// For example `make 0.10 a member of VLAN 5 (0x5)`; empty where no document changes anything.
    /// \param rule as in simulation::Decision. Throws std::out_of_range when there is no such rule.
    static std::string get(std::string_view rule, Way const& way);
};

} // namespace board
