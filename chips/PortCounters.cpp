#include "chips/PortCounters.hpp"

#include <algorithm>

namespace chips {

bool PortCounters::isRead() const {
    return std::any_of(values.begin(), values.end(), [](auto const& value) { return value.has_value(); });
}

bool PortCounters::isComplete() const {
    return std::all_of(values.begin(), values.end(), [](auto const& value) { return value.has_value(); });
}

} // namespace chips
