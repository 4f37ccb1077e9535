#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace chips {

/// What a look at the chips of one family shows, whether or not they answer.
struct Examination {
    enum class Cause {
        masterStuck,
        accessFails,
        allOnes,
        allZeros,
        unsteady,
        nothingThere,
        otherAddress,
        otherChip,
        wrongStrap,
        byteOrder,
        chipStuck,
        phyAbsent,
        lineSilent,
        lineGarbled,
        noPlace,
    };

    /// What was read at one place, or at several in the same way.
    struct Reading {
        struct Word {
            std::string name;
            /// In hexadecimal, as long as the register.
            std::string value;
        };
        std::string place;
        std::vector<Word> words;
        /// What that is taken for.
        std::string meaning;
    };

    struct Finding {
        Cause cause;
        /// Of whom it is said; of the whole bus without.
        std::optional<unsigned> switchId;
        /// What was seen, and what it comes from.
        std::string text;
        /// What to look at next on the board.
        std::vector<std::string> measure;
    };

    std::vector<Reading> readings;
    std::vector<Finding> findings;
    /// What was not looked at, and why.
    std::vector<std::string> unread;
    /// By switch id: how those that answer as they should do so.
    std::map<unsigned, std::string> answers;
    /// The chips that answer have said which product they are.
    bool isIdentified = true;

    void add(Cause cause, std::optional<unsigned> switchId, std::string const& text,
             std::vector<std::string> const& measure) {
        findings.push_back({cause, switchId, text, measure});
    }

    /// "master stuck", for people, and in JSON.
    static std::string nameOf(Cause cause);
};

/// What an examination needs to know.
struct ExaminationRequest {
    struct Switch {
        unsigned id;
        /// Ports of the document that go to an outlet, and so want a PHY.
        std::vector<unsigned> portsWithPhy;
    };
    /// Those of the family that the document has, in its order.
    std::vector<Switch> switches;
    /// Whether a register of a chip may be written, command registers included.
    bool allowsWrites = false;
};

} // namespace chips
