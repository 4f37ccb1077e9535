#pragma once

#include <map>
#include <memory>
#include <string>

#include "chips/ChipCatalogue.hpp"

namespace board {
class BoardReading;
}

namespace board {

/// The chips of a trace by their switches' ids.
class TraceChips {
public:
    TraceChips() = default;

    /// Those of a document that the library knows; of those with the same id, the first.
    explicit TraceChips(BoardReading const& document);

    /// \return false when the id is taken or there is no such model.
    bool add(unsigned switchId, std::string const& model);

    /// Null when there is no such chip.
    chips::ChipCatalogue const* find(unsigned switchId) const;

    std::map<unsigned, std::shared_ptr<chips::ChipCatalogue const>> const& getAll() const { return _chips; }

private:
    std::map<unsigned, std::shared_ptr<chips::ChipCatalogue const>> _chips;
};

} // namespace board
