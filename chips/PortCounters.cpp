#include "chips/PortCounters.hpp"

#include <algorithm>

#include "chips/ChipKinds.hpp"

namespace chips {

std::vector<Counter> const& PortCounters::getCounters() const {
    return ChipKinds::get(model, "statistics").getFacts().counters;
}

bool PortCounters::isRead() const {
    return std::any_of(values.begin(), values.end(), [](auto const& value) { return value.has_value(); });
}

bool PortCounters::isComplete() const {
    return std::all_of(values.begin(), values.end(), [](auto const& value) { return value.has_value(); });
}

} // namespace chips
