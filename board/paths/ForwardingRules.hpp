#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace board {

/// How sure it is that chips follow the rules by which the models forward frames.
class ForwardingRules {
public:
    enum class Mark {
        /// Public drivers of the family say so, or could not work otherwise.
        sure,
        /// A sibling chip, or a name that leaves little room.
        likely,
        /// Nothing public.
        assumed
    };

    struct Rule {
        /// As in simulation::Decision.
        std::string_view number;
        /// What it is about, in a word or two.
        char const* name;
        Mark mark;
        /// What the rule decides; of one that is not sure, what of it is not.
        char const* text;
    };

    /// Throws std::out_of_range when there is no such rule.
    static Rule const& get(std::string_view number);

    /// "likely".
    static char const* name(Mark mark);

    /// Those that are not sure, of a list of numbers with blanks between them. Pointers to rules ascend with
    /// their numbers.
    static std::vector<Rule const*> unsureOf(std::string const& numbers);
};

} // namespace board
