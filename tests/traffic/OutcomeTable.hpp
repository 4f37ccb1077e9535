#pragma once

#include <string>
#include <vector>

#include "tests/traffic/Outcome.hpp"

/// Outcomes by the port where the frame came in. Ports that act alike are one row.
class OutcomeTable {
public:
    using End = Outcome::End;

    /// Words of the text, for example "from", "to".
    struct Words {
        char const* sender;
        char const* destination;
    };

    void add(End const& from, Outcome const& outcome);

    /// A row: the senders, in the next lines what became of the frame, which each of them but itself got.
    std::string describe(Words const& words) const;

private:
    struct Row {
        Outcome::Ends senders;
        std::vector<std::pair<End, Outcome>> outcomes;
        Outcome together;
    };

    static bool fits(Row const& row, Outcome const& together);
    static bool returns(Row const& row, Outcome const& together);
    static Outcome unite(Outcome const& one, Outcome const& other);

    std::vector<Row> _rows;
};
