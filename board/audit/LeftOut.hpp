#pragma once

#include <map>
#include <string>
#include <vector>

namespace board {

/// What a comparison leaves out, by the reason.
class LeftOut {
public:
    struct Group {
        /// What they are, in words: "counters".
        std::string reason;
        unsigned count;
        /// Each once, ascending; of three or more that are numbered through, the first and the last, in one.
        std::vector<std::string> names;
    };

    void add(std::string const& reason, std::string const& name);
    void add(LeftOut const& other);

    std::vector<Group> getGroups() const;

    /// All in one line; empty when nothing is left out.
    std::string getText() const;

private:
    /// How often each name came.
    std::map<std::string, std::map<std::string, unsigned>> _names;
};

} // namespace board
