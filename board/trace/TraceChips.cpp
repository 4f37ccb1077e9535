#include "board/trace/TraceChips.hpp"

#include <stdexcept>

#include "board/BoardReading.hpp"

namespace board {

TraceChips::TraceChips(BoardReading const& document) {
    for (BoardReading::Wanted const& entry : document.getWanted()) {
        add(entry.id, entry.model);
    }
}

bool TraceChips::add(unsigned switchId, std::string const& model) {
    if (_chips.count(switchId) != 0) {
        return false;
    }
    try {
        _chips.emplace(switchId, std::make_shared<chips::ChipCatalogue const>(model));
    } catch (std::out_of_range const&) {
        return false;
    }
    return true;
}

chips::ChipCatalogue const* TraceChips::find(unsigned switchId) const {
    auto const found = _chips.find(switchId);
    return found == _chips.end() ? nullptr : found->second.get();
}

} // namespace board
