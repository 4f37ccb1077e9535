#include "board/intent/FrameKind.hpp"

#include <fmt/format.h>

#include <tuple>

namespace board {

bool FrameKind::Tags::operator<(Tags const& other) const {
    return std::tie(count, vid, inner) < std::tie(other.count, other.vid, other.inner);
}

std::string FrameKind::Tags::describe() const {
    switch (count) {
    case 0:
        return "untagged";
    case 1:
        return fmt::format("tagged {}", vid);
    default:
        return fmt::format("tagged {} and {}", vid, inner);
    }
}

} // namespace board
