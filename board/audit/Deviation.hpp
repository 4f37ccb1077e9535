#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chips/ChipImage.hpp"

namespace board {

/// A field of a chip that is not as a bring-up leaves it.
struct Deviation {
    /// For example "switch 0".
    std::string chip;
    /// For example "port 3" or "VTU".
    std::string unit;
    /// A register or an entry of a table.
    std::string item;
    /// Empty when the whole entry is too much or missing.
    std::string field;
    /// Nothing for an entry that is not to be, or is not, there.
    std::optional<std::uint32_t> expected;
    std::optional<std::uint32_t> found;
    /// What is expected is what a reset leaves, since start-up does not write there.
    bool isAfterReset;

    /// In the order of the chip; last, the entries that are too much. Where `found` was not read there are
    /// none.
    static std::vector<Deviation> between(std::string const& chip, chips::ChipImage const& expected,
                                          chips::ChipImage const& found);

    /// In one line.
    std::string getText() const;
};

} // namespace board
